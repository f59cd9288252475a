#pragma once

#include <QModelIndex>

namespace kyr::selection {

/// Whether `QItemSelection::indexes` lists the cell.
inline bool canBeSelected(const QModelIndex& cell)
{
    constexpr Qt::ItemFlags needed = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return (cell.flags() & needed) == needed;
}

} // namespace kyr::selection
