#include "row_reader.h"

namespace kyr::panel {

RowReader::RowReader(SourceRows& rows, SourceRows::StartOf startOf, const QModelIndex& parent,
                     quint32 parentFlags, int first, int last, int depth)
    : m_rows(rows), m_startOf(std::move(startOf))
{
    m_sequences.push_back({RowTree::none, depth, {}, {{parent, parentFlags, first, last}}});
}

bool RowReader::step()
{
    RowTree& tree = m_rows.tree();
    Sequence& sequence = m_sequences.back();
    while (!sequence.levels.empty() && sequence.levels.back().row > sequence.levels.back().last)
        sequence.levels.pop_back();
    if (sequence.levels.empty()) {
        const RowTree::Node root = tree.build(sequence.rows);
        const RowTree::Node owner = sequence.owner;
        m_sequences.pop_back();
        if (m_sequences.empty()) {
            m_result = root;
            return true;
        }
        tree.setHidden(owner, root);
        return false;
    }
    const QAbstractItemModel& source = *m_rows.source();
    Level& level = sequence.levels.back();
    const QModelIndex index = source.index(level.row++, 0, level.parent);
    const SourceRows::Start start = m_startOf(index, level.flags);
    const int depth = sequence.depth + int(sequence.levels.size()) - 1;
    const RowTree::Node node = tree.create(depth, start.flags);
    sequence.rows.push_back(node);
    const bool expanded = (start.flags & RowTree::Expanded) != 0;
    if (!expanded && !start.keepsHidden)
        return false;
    const Level children{index, start.flags, 0, source.rowCount(index) - 1};
    if (expanded)
        sequence.levels.push_back(children);
    else
        m_sequences.push_back({node, depth + 1, {}, {children}});
    return false;
}

} // namespace kyr::panel
