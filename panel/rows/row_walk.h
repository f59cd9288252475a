#pragma once

#include <panel/rows/row_tree.h>

#include <QAbstractItemModel>

namespace kyr::panel {

/// Goes down the rows of a scene together with their indexes, O(1) a step on average.
class RowWalk
{
public:
    using Node = RowTree::Node;

    /// Starts at `node`, which stands for `index`.
    RowWalk(const RowTree& rows, Node node, const QModelIndex& index)
        : m_rows(&rows), m_node(node), m_index(index), m_parent(index.parent())
    {}

    bool atEnd() const { return m_node == RowTree::none; }
    Node node() const { return m_node; }
    const QModelIndex& index() const { return m_index; }

    void next() { goTo(m_rows->next(m_node)); }
    void nextShown()
    {
        const Node next = m_rows->next(m_node);
        goTo(isBelow(next) && !m_rows->isOpen(m_node) ? m_rows->afterBranch(m_node) : next);
    }

private:
    bool isBelow(Node next) const
    {
        return next != RowTree::none && m_rows->depth(next) > m_rows->depth(m_node);
    }
    void goTo(Node node)
    {
        const int up = m_rows->depth(m_node) - m_rows->depth(node);
        m_node = node;
        if (atEnd() || !m_index.isValid())
            return;
        if (up == 0) {
            m_index = m_index.model()->index(m_index.row() + 1, 0, m_parent);
            return;
        }
        int row = 0;
        if (up < 0)
            m_parent = m_index;
        for (int level = 0; level < up; ++level) {
            row = m_parent.row() + 1;
            m_parent = m_parent.parent();
        }
        m_index = m_index.model()->index(row, 0, m_parent);
    }

    const RowTree* m_rows;
    Node m_node;
    QModelIndex m_index;
    QModelIndex m_parent;
};

} // namespace kyr::panel
