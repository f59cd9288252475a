#include "saved_cells.h"

#include "selectable_cell.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <memory>
#include <vector>

namespace kyr::selection {
namespace {

// A run of cells at its present place.
struct Run
{
    QModelIndex first;
    int columns;
    QModelIndex parent;
};

// Adjacent cells of one row that are followed through a change of the model's layout.
struct SavedCells
{
    QPersistentModelIndex first;
    int columns;
};

// Whole rows sort by their place alone, single cells by parent first, as the stock model has it.
std::vector<Run> sortedRuns(const std::vector<SavedCells>& cells, bool wholeRows)
{
    std::vector<Run> runs;
    runs.reserve(cells.size());
    for (const SavedCells& saved : cells) {
        if (saved.first.isValid())
            runs.push_back({saved.first, saved.columns, saved.first.parent()});
    }
    std::stable_sort(runs.begin(), runs.end(), [wholeRows](const Run& a, const Run& b) {
        if (!wholeRows && a.parent != b.parent)
            return a.parent < b.parent;
        return a.first < b.first || (a.first == b.first && a.columns < b.columns);
    });
    return runs;
}

std::vector<Run> joinedColumns(const std::vector<Run>& cells)
{
    std::vector<Run> runs;
    for (const Run& cell : cells) {
        if (!runs.empty()) {
            Run& last = runs.back();
            if (last.parent == cell.parent && last.first.row() == cell.first.row() &&
                last.first.column() + last.columns == cell.first.column()) {
                ++last.columns;
                continue;
            }
        }
        runs.push_back(cell);
    }
    return runs;
}

QItemSelection joinedRows(const std::vector<Run>& runs)
{
    QItemSelection selection;
    for (std::size_t begin = 0; begin < runs.size();) {
        const Run& first = runs[begin];
        std::size_t end = begin + 1;
        while (end < runs.size() && runs[end].parent == first.parent &&
               runs[end].columns == first.columns &&
               runs[end].first.column() == first.first.column() &&
               runs[end].first.row() == runs[end - 1].first.row() + 1)
            ++end;
        const QModelIndex& last = runs[end - 1].first;
        selection.append(QItemSelectionRange(
            first.first, last.sibling(last.row(), last.column() + first.columns - 1)));
        begin = end;
    }
    return selection;
}

std::vector<SavedCells> savedCells(const QItemSelection& ranges, bool wholeRows)
{
    std::vector<SavedCells> cells;
    for (const QItemSelectionRange& range : ranges) {
        if (!range.isValid())
            continue;
        const QModelIndex topLeft = range.topLeft();
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (wholeRows) {
                cells.push_back({topLeft.sibling(row, range.left()), range.width()});
                continue;
            }
            for (int column = range.left(); column <= range.right(); ++column) {
                const QModelIndex cell = topLeft.sibling(row, column);
                if (canBeSelected(cell))
                    cells.push_back({cell, 1});
            }
        }
    }
    return cells;
}

QItemSelection restoredCells(const std::vector<SavedCells>& cells, bool wholeRows)
{
    const std::vector<Run> runs = sortedRuns(cells, wholeRows);
    return joinedRows(wholeRows ? runs : joinedColumns(runs));
}

} // namespace

CellKeeper throughLayoutChange(bool wholeRows)
{
    return [wholeRows](const QItemSelection& ranges) -> RestoredCells {
        // Shared, because a function object has to be copyable; persistent indexes are not cheap.
        const auto cells = std::make_shared<std::vector<SavedCells>>(savedCells(ranges, wholeRows));
        return [cells, wholeRows] { return restoredCells(*cells, wholeRows); };
    };
}

} // namespace kyr::selection
