#include "scene_reader.h"

namespace kyr::panel {

SceneReader::~SceneReader()
{
    for (const RowTree::Node node : m_new)
        m_marks.destroy(node);
}

void SceneReader::add(const QModelIndex& parent, int first, int last, int depth)
{
    if (first <= last)
        m_levels.push_back({parent, first, last, depth});
}

void SceneReader::add(const RowTree& rows, const RowWalk& walk, RowTree::Node end)
{
    m_rows = &rows;
    m_walk.emplace(walk);
    m_end = end;
}

RowTree::Node SceneReader::nodeFor(const QModelIndex& index)
{
    const auto known = m_start.known.constFind(index);
    if (known != m_start.known.constEnd())
        return *known;
    const bool opens = m_start.expandedRole >= 0 && index.data(m_start.expandedRole).toBool();
    const RowTree::Node node = opens ? m_marks.create({}) : m_marks.create({RowMarks::Closed});
    m_marks.set(node, RowMarks::Unread, !opens && !m_start.readsAll);
    m_new.push_back(node);
    return node;
}

bool SceneReader::step()
{
    if (!m_levels.empty()) {
        Level& level = m_levels.back();
        const QModelIndex index = m_scene.index(level.row, 0, level.parent);
        const int depth = level.depth;
        if (++level.row > level.last)
            m_levels.pop_back();
        const RowTree::Node node = nodeFor(index);
        m_all.push_back({node, depth});
        if (!m_marks.has(node, RowMarks::Unread))
            add(index, 0, m_scene.rowCount(index) - 1, depth + 1);
        return true;
    }
    if (!m_walk || m_walk->node() == m_end)
        return false;
    const RowTree::Node node = m_walk->node();
    const QModelIndex& index = m_walk->index();
    m_all.push_back({node, m_rows->depth(node)});
    if (m_marks.has(node, RowMarks::Unread)) {
        m_read.push_back(node);
        add(index, 0, m_scene.rowCount(index) - 1, m_rows->depth(node) + 1);
    }
    m_walk->next();
    return true;
}

std::vector<RowTree::Row> SceneReader::take()
{
    for (const RowTree::Node node : m_read)
        m_marks.set(node, RowMarks::Unread, false);
    m_new.clear();
    return std::move(m_all);
}

} // namespace kyr::panel
