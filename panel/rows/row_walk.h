#pragma once

#include <panel/rows/row_tree.h>

#include <QAbstractItemModel>
#include <QVarLengthArray>

#include <algorithm>
#include <optional>
#include <vector>

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

/// Goes over every row that was read, hidden ones after those that hide them.
class KnownRowWalk
{
public:
    KnownRowWalk(const RowTree& rows, RowTree::Node root, const QAbstractItemModel& source)
        : m_rows(rows), m_source(source), m_sequences{{root, QModelIndex()}}
    {
        nextSequence();
    }

    bool atEnd() const { return !m_walk; }
    RowTree::Node node() const { return m_walk->node(); }
    const QModelIndex& index() const { return m_walk->index(); }

    void next()
    {
        if (const RowTree::Node hidden = m_rows.hidden(node()); hidden != RowTree::none)
            m_sequences.emplace_back(hidden, index());
        m_walk->next();
        if (m_walk->atEnd())
            nextSequence();
    }

private:
    void nextSequence()
    {
        m_walk.reset();
        while (!m_walk && !m_sequences.empty()) {
            const auto [root, parent] = m_sequences.back();
            m_sequences.pop_back();
            if (root != RowTree::none)
                m_walk.emplace(m_rows, m_rows.first(root), m_source.index(0, 0, parent));
        }
    }

    const RowTree& m_rows;
    const QAbstractItemModel& m_source;
    std::vector<std::pair<RowTree::Node, QModelIndex>> m_sequences;
    std::optional<RowWalk> m_walk;
};

} // namespace kyr::panel
