// The four ways in which the tree changes its shape, each between its pair of signals.

#include "scene_document.h"

#include <algorithm>

namespace editor {

namespace {

SceneObjects::difference_type offset(int row)
{
    return row;
}

} // namespace

void SceneDocument::insertRows(SceneObject& parent, int row, SceneObjects objects)
{
    const int last = row + int(objects.size()) - 1;
    Q_EMIT rowsAboutToBeInserted(&parent, row, last);
    for (const SceneObjectPtr& object : objects) {
        object->m_parent = &parent;
        attach(*object);
    }
    auto& children = parent.m_children;
    children.insert(children.begin() + offset(row), std::make_move_iterator(objects.begin()),
                    std::make_move_iterator(objects.end()));
    parent.m_numberedChildren = std::min(parent.m_numberedChildren, row);
    Q_EMIT rowsInserted(&parent, row, last);
    noteShape(parent);
}

SceneObjects SceneDocument::takeRows(SceneObject& parent, int row, int count)
{
    Q_EMIT rowsAboutToBeRemoved(&parent, row, row + count - 1);
    auto& children = parent.m_children;
    const auto first = children.begin() + offset(row);
    SceneObjects taken(std::make_move_iterator(first),
                       std::make_move_iterator(first + offset(count)));
    children.erase(first, first + offset(count));
    parent.m_numberedChildren = std::min(parent.m_numberedChildren, row);
    for (const SceneObjectPtr& object : taken) {
        detach(*object);
        object->m_parent = nullptr;
    }
    Q_EMIT rowsRemoved(&parent, row, row + count - 1);
    noteShape(parent);
    return taken;
}

void SceneDocument::moveRows(SceneObject& from, int first, int count, SceneObject& to, int row)
{
    const int last = first + count - 1;
    Q_EMIT rowsAboutToBeMoved(&from, first, last, &to, row);
    auto& source = from.m_children;
    const auto begin = source.begin() + offset(first);
    const auto end = begin + offset(count);
    if (&from == &to) {
        const auto target = source.begin() + offset(row);
        if (row < first)
            std::rotate(target, begin, end);
        else
            std::rotate(begin, end, target);
        from.m_numberedChildren = std::min({from.m_numberedChildren, first, row});
    } else {
        SceneObjects moved(std::make_move_iterator(begin), std::make_move_iterator(end));
        source.erase(begin, end);
        for (const SceneObjectPtr& object : moved)
            object->m_parent = &to;
        to.m_children.insert(to.m_children.begin() + offset(row),
                             std::make_move_iterator(moved.begin()),
                             std::make_move_iterator(moved.end()));
        from.m_numberedChildren = std::min(from.m_numberedChildren, first);
        to.m_numberedChildren = std::min(to.m_numberedChildren, row);
    }
    Q_EMIT rowsMoved(&from, first, last, &to, row);
    noteShape(from);
    noteShape(to);
    if (&from != &to) {
        for (int i = row; i < row + count; ++i) {
            spreadInherited(*to.m_children[std::size_t(i)],
                            ChangeAspect::Visibility | ChangeAspect::Lock);
        }
    }
}

void SceneDocument::reorder(SceneObject& parent, const std::vector<int>& oldRows)
{
    Q_EMIT childrenAboutToBeReordered(&parent, oldRows);
    auto& children = parent.m_children;
    SceneObjects reordered;
    reordered.reserve(children.size());
    for (const int oldRow : oldRows)
        reordered.push_back(std::move(children[std::size_t(oldRow)]));
    children = std::move(reordered);
    parent.m_numberedChildren = 0;
    Q_EMIT childrenReordered(&parent, oldRows);
    noteShape(parent);
}

void SceneDocument::noteShape(SceneObject& parent)
{
    m_structureChanged = true;
    noteChange(parent, ChangeAspect::Children);
}

} // namespace editor
