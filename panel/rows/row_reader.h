#pragma once

#include <panel/rows/source_rows.h>

#include <vector>

namespace kyr::panel {

/// Reads rows of a model, one with each step, to a sequence of their own: children of those that
/// start expanded below them, children of those that keep hidden ones with their parents.
class RowReader
{
public:
    /// Children `first` to `last` of `parent`, at the given depth.
    RowReader(SourceRows& rows, SourceRows::StartOf startOf, const QModelIndex& parent,
              quint32 parentFlags, int first, int last, int depth);

    /// True when all rows are read.
    bool step();
    RowTree::Node result() const { return m_result; }

private:
    struct Level
    {
        QModelIndex parent;
        quint32 flags;
        int row;
        int last;
    };
    struct Sequence
    {
        RowTree::Node owner;
        int depth;
        std::vector<RowTree::Node> rows;
        std::vector<Level> levels;
    };

    SourceRows& m_rows;
    SourceRows::StartOf m_startOf;
    std::vector<Sequence> m_sequences;
    RowTree::Node m_result = RowTree::none;
};

} // namespace kyr::panel
