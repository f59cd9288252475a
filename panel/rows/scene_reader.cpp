#include "scene_reader.h"

namespace kyr::panel {

using Node = RowTree::Node;

void FreshRows::add(const QModelIndex& parent, quint32 parentFlags, int first, int last, int depth)
{
    if (first <= last)
        m_levels.push_back({parent, parentFlags, first, last, depth});
}

void FreshRows::step(std::vector<Node>& rows)
{
    if (isDone())
        return;
    Level& level = m_levels.back();
    const QModelIndex index = m_model.index(level.row, 0, level.parent);
    const quint32 flags = m_startOf(index, level.flags);
    const int depth = level.depth;
    rows.push_back(m_rows.create(depth, flags));
    if (++level.row > level.last)
        m_levels.pop_back();
    if ((flags & RowTree::Unread) == 0)
        add(index, flags, 0, m_model.rowCount(index) - 1, depth + 1);
}

BranchReader::~BranchReader()
{
    for (const auto& [first, last] : m_new) {
        const auto begin = m_all.begin();
        m_rows.destroy({begin + std::ptrdiff_t(first), begin + std::ptrdiff_t(last)});
    }
}

bool BranchReader::step()
{
    if (!m_fresh.isDone()) {
        m_fresh.step(m_all);
        m_new.back().second = m_all.size();
        return false;
    }
    const Node node = m_walk.node();
    if (node == m_end)
        return true;
    m_all.push_back(node);
    if (m_rows.has(node, RowTree::Unread)) {
        const QModelIndex& index = m_walk.index();
        m_read.push_back(node);
        m_new.emplace_back(m_all.size(), m_all.size());
        m_fresh.add(index, m_rows.flags(node), 0, m_model.rowCount(index) - 1,
                    m_rows.depth(node) + 1);
    }
    m_walk.next();
    return false;
}

std::vector<Node> BranchReader::take()
{
    for (const Node node : m_read)
        m_rows.set(node, RowTree::Unread, false);
    m_new.clear();
    return std::move(m_all);
}

} // namespace kyr::panel
