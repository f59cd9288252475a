#pragma once

#include <panel/rows/source_rows.h>

#include <QItemSelection>

#include <optional>

namespace kyr::panel {

class ArrangedTreeModel;

/// Marks the rows of a selection as selected or not, one with each step. The selection is one of
/// the model that `arranged` arranges, or of the rows' own when that is null.
class SelectionMarker
{
public:
    SelectionMarker(const QItemSelection& ranges, bool selected, const ArrangedTreeModel* arranged)
        : m_ranges(ranges), m_selected(selected), m_arranged(arranged)
    {}

    /// True when all are marked; appends the row if its mark changed.
    bool step(SourceRows& rows, std::vector<RowTree::Node>& changed);

private:
    bool startRange(const SourceRows& rows);

    const QItemSelection m_ranges;
    const bool m_selected;
    const ArrangedTreeModel* m_arranged;
    int m_range = -1;
    int m_row = 0;
    int m_last = -1;
    QModelIndex m_originParent;
    // Rows that are neighbours in the origin mostly stay in one family.
    std::optional<SourceRows::Family> m_family;
    QModelIndex m_parent;
};

} // namespace kyr::panel
