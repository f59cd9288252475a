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
        : m_rows(&rows), m_node(node), m_index(index)
    {}

    bool atEnd() const { return m_node == RowTree::none; }
    Node node() const { return m_node; }
    const QModelIndex& index() const { return m_index; }

    void next() { goTo(m_rows->next(m_node)); }
    void nextShown()
    {
        goTo(m_rows->isOpen(m_node) ? m_rows->next(m_node) : m_rows->afterBranch(m_node));
    }

private:
    void goTo(Node node)
    {
        int up = m_rows->depth(m_node) - m_rows->depth(node);
        m_node = node;
        if (atEnd())
            return;
        if (up < 0) {
            m_index = m_index.model()->index(0, 0, m_index);
            return;
        }
        while (up-- > 0)
            m_index = m_index.parent();
        m_index = m_index.sibling(m_index.row() + 1, 0);
    }

    const RowTree* m_rows;
    Node m_node;
    QModelIndex m_index;
};

} // namespace kyr::panel
