#pragma once

#include <QItemSelection>
#include <QPersistentModelIndex>

#include <vector>

namespace kyr::selection {

/// Adjacent cells of one row that are followed through a change of the model's layout.
struct SavedCells
{
    QPersistentModelIndex first;
    int columns;
};

/// The cells of `ranges`: whole rows of each range when only rows are sorted, else single cells,
/// of which those that can be selected.
std::vector<SavedCells> savedCells(const QItemSelection& ranges, bool wholeRows);

/// The cells where they are now, sorted and joined into ranges.
QItemSelection restoredCells(const std::vector<SavedCells>& cells, bool wholeRows);

} // namespace kyr::selection
