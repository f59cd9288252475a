#pragma once

#include <QItemSelection>

namespace kyr::selection {

/// `ranges` without those whose cells are gone.
QItemSelection validRanges(const QItemSelection& ranges);

/// What `QItemSelection::merge` makes of `ranges`: the same ranges in the same order, in
/// O(n log n) instead of O(n^2).
QItemSelection merged(const QItemSelection& ranges, const QItemSelection& other,
                      QItemSelectionModel::SelectionFlags command);

/// `selection` widened to whole rows, whole columns, or both one after the other.
QItemSelection expanded(const QItemSelection& selection, const QAbstractItemModel& model,
                        QItemSelectionModel::SelectionFlags command);

struct Difference
{
    QItemSelection selected;
    QItemSelection deselected;
    bool isEmpty() const { return selected.isEmpty() && deselected.isEmpty(); }
};

/// The cells that came and went between two selections.
Difference difference(const QItemSelection& before, const QItemSelection& after);

} // namespace kyr::selection
