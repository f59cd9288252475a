#pragma once

#include <QItemSelection>
#include <QPersistentModelIndex>

#include <functional>

namespace kyr::selection {

/// Gives the cells that were kept through a change of the item model where they are now, sorted
/// and joined into ranges as the stock model does it. Called at most once. Empty when nothing is
/// kept.
using RestoredCells = std::function<QItemSelection()>;

/// Takes hold of the cells of a list before the item model moves them.
using CellKeeper = std::function<RestoredCells(const QItemSelection&)>;

/// For any change of the layout: follows each selectable cell, or, when `wholeRows` is set, each
/// row of a range, whose cells then stay together.
CellKeeper throughLayoutChange(bool wholeRows);

/// For rows that move. Costs no persistent index a cell, because the move says where each row goes.
/// Ranges that stay as they are come back as they were.
CellKeeper throughRowMove(const QModelIndex& from, int first, int last, const QModelIndex& to,
                          int row);

} // namespace kyr::selection
