#pragma once

#include <panel/outline/outline_model.h>

#include <vector>

namespace kyr::panel {

/// The scene's selected rows, hidden ones too, in the order of the selection: as indexes, or as
/// persistent ones for changes that may move rows.
template <typename Index>
std::vector<Index> selectedRows(const OutlineModel& flat)
{
    std::vector<Index> rows;
    for (const QItemSelectionRange& range : flat.selectionModel()->selection()) {
        for (int row = range.top(); range.left() == 0 && row <= range.bottom(); ++row)
            rows.emplace_back(range.model()->index(row, 0, range.parent()));
    }
    return rows;
}

} // namespace kyr::panel
