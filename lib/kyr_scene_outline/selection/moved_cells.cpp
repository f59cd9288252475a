#include "saved_cells.h"

#include "selectable_cell.h"

#include <QAbstractItemModel>
#include <QHash>

#include <algorithm>
#include <memory>
#include <tuple>
#include <vector>

namespace kyr::selection {
namespace {

/// A move of rows, in places from before it.
struct RowMove
{
    QPersistentModelIndex from;
    int first;
    int last;
    QPersistentModelIndex to;
    int row;
};

/// Adjacent cells under one parent, which is a number.
struct Cells
{
    int parent;
    int row;
    int column;
    int rows;
    int columns;
};

/// The cells of some ranges by their places, which a move turns into other places.
class MovedCells
{
public:
    MovedCells(QItemSelection ranges, const RowMove& move)
        : m_ranges(std::move(ranges))
        , m_move(move)
        , m_from(numberOf(move.from))
        , m_to(numberOf(move.to))
    {
        for (const QItemSelectionRange& range : m_ranges) {
            if (range.isValid())
                add(range);
        }
    }

    QItemSelection afterMove();

private:
    int numberOf(const QModelIndex& parent);
    void add(const QItemSelectionRange& range);
    void applyMove();
    void sortCells(const std::vector<QModelIndex>& parents);
    void joinColumns();
    void joinRows();
    QItemSelection toSelection(const std::vector<QModelIndex>& parents) const;

    QItemSelection m_ranges;
    RowMove m_move;
    std::vector<QPersistentModelIndex> m_parents;
    QHash<QModelIndex, int> m_numbers;
    int m_from;
    int m_to;
    std::vector<Cells> m_cells;
};

int MovedCells::numberOf(const QModelIndex& parent)
{
    const auto found = m_numbers.constFind(parent);
    if (found != m_numbers.constEnd())
        return *found;
    const int number = static_cast<int>(m_parents.size());
    m_parents.emplace_back(parent);
    m_numbers.insert(parent, number);
    return number;
}

void MovedCells::add(const QItemSelectionRange& range)
{
    const QAbstractItemModel* model = range.model();
    const QModelIndex parent = range.parent();
    const int number = numberOf(parent);
    for (int row = range.top(); row <= range.bottom(); ++row) {
        for (int column = range.left(); column <= range.right(); ++column) {
            if (canBeSelected(model->index(row, column, parent)))
                m_cells.push_back({number, row, column, 1, 1});
        }
    }
}

void MovedCells::applyMove()
{
    const int count = m_move.last - m_move.first + 1;
    const int target = m_from == m_to && m_move.row > m_move.last ? m_move.row - count : m_move.row;
    for (Cells& cells : m_cells) {
        if (cells.parent == m_from && cells.row >= m_move.first && cells.row <= m_move.last) {
            cells.parent = m_to;
            cells.row += target - m_move.first;
            continue;
        }
        if (cells.parent == m_from && cells.row > m_move.last)
            cells.row -= count;
        if (cells.parent == m_to && cells.row >= target)
            cells.row += count;
    }
}

void MovedCells::sortCells(const std::vector<QModelIndex>& parents)
{
    const auto before = [&parents](const Cells& a, const Cells& b) {
        if (a.parent != b.parent)
            return parents[static_cast<std::size_t>(a.parent)] <
                   parents[static_cast<std::size_t>(b.parent)];
        return std::tie(a.row, a.column) < std::tie(b.row, b.column);
    };
    if (!std::is_sorted(m_cells.begin(), m_cells.end(), before))
        std::stable_sort(m_cells.begin(), m_cells.end(), before);
}

void MovedCells::joinColumns()
{
    std::size_t kept = 0;
    for (std::size_t next = 1; next < m_cells.size(); ++next) {
        Cells& last = m_cells[kept];
        const Cells& cell = m_cells[next];
        if (cell.parent == last.parent && cell.row == last.row &&
            cell.column == last.column + last.columns)
            ++last.columns;
        else
            m_cells[++kept] = cell;
    }
    m_cells.resize(std::min(m_cells.size(), kept + 1));
}

void MovedCells::joinRows()
{
    std::size_t kept = 0;
    for (std::size_t next = 1; next < m_cells.size(); ++next) {
        Cells& last = m_cells[kept];
        const Cells& cells = m_cells[next];
        if (cells.parent == last.parent && cells.row == last.row + last.rows &&
            cells.column == last.column && cells.columns == last.columns)
            ++last.rows;
        else
            m_cells[++kept] = cells;
    }
    m_cells.resize(std::min(m_cells.size(), kept + 1));
}

QItemSelection MovedCells::toSelection(const std::vector<QModelIndex>& parents) const
{
    const auto covers = [&parents](const QItemSelectionRange& range, const Cells& cells) {
        return range.top() == cells.row && range.left() == cells.column &&
               range.height() == cells.rows && range.width() == cells.columns && range.isValid() &&
               range.parent() == parents[static_cast<std::size_t>(cells.parent)];
    };
    // How far ahead an old range is looked for: a move puts single ranges elsewhere.
    constexpr int reach = 2;
    QItemSelection selection;
    selection.reserve(static_cast<int>(m_cells.size()));
    int next = 0;
    for (const Cells& cells : m_cells) {
        int found = next;
        while (found < m_ranges.size() && found - next <= reach &&
               !covers(m_ranges.at(found), cells))
            ++found;
        if (found < m_ranges.size() && found - next <= reach) {
            selection.append(m_ranges.at(found));
            next = found + 1;
            continue;
        }
        const QModelIndex& parent = parents[static_cast<std::size_t>(cells.parent)];
        const QAbstractItemModel* model = m_ranges.constFirst().model();
        selection.append(QItemSelectionRange(
            model->index(cells.row, cells.column, parent),
            model->index(cells.row + cells.rows - 1, cells.column + cells.columns - 1, parent)));
    }
    return selection;
}

QItemSelection MovedCells::afterMove()
{
    applyMove();
    const std::vector<QModelIndex> parents(m_parents.begin(), m_parents.end());
    sortCells(parents);
    joinColumns();
    joinRows();
    return toSelection(parents);
}

} // namespace

CellKeeper throughRowMove(const QModelIndex& from, int first, int last, const QModelIndex& to,
                          int row)
{
    const RowMove move{from, first, last, to, row};
    return [move](const QItemSelection& ranges) -> RestoredCells {
        const auto cells = std::make_shared<MovedCells>(ranges, move);
        return [cells] { return cells->afterMove(); };
    };
}

} // namespace kyr::selection
