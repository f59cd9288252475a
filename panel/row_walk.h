#pragma once

#include <panel/row_tree.h>

#include <QAbstractItemModel>
#include <QVarLengthArray>

namespace kyr::panel {

/// Goes down the rows of a sequence together with their source indexes, O(1) a step.
class RowWalk
{
public:
    /// Starts at `node`, which stands for `index`.
    RowWalk(const RowTree& rows, RowTree::Node node, const QModelIndex& index)
        : m_rows(rows), m_node(node), m_index(index)
    {
        for (QModelIndex up = index.parent(); up.isValid(); up = up.parent())
            m_ancestors.append(up);
        std::reverse(m_ancestors.begin(), m_ancestors.end());
    }

    bool atEnd() const { return m_node == RowTree::none; }
    RowTree::Node node() const { return m_node; }
    const QModelIndex& index() const { return m_index; }

    void next()
    {
        const int depth = m_rows.depth(m_node);
        m_node = m_rows.next(m_node);
        if (atEnd())
            return;
        const int change = m_rows.depth(m_node) - depth;
        if (change > 0) {
            m_ancestors.append(m_index);
            m_index = m_index.model()->index(0, 0, m_index);
            return;
        }
        for (int level = change; level < 0 && !m_ancestors.isEmpty(); ++level) {
            m_index = m_ancestors.last();
            m_ancestors.removeLast();
        }
        const QModelIndex parent = m_ancestors.isEmpty() ? QModelIndex() : m_ancestors.last();
        if (m_index.isValid())
            m_index = m_index.model()->index(m_index.row() + 1, 0, parent);
    }

private:
    const RowTree& m_rows;
    RowTree::Node m_node;
    QModelIndex m_index;
    QVarLengthArray<QModelIndex, 32> m_ancestors;
};

} // namespace kyr::panel
