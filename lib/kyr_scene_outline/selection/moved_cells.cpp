#include "saved_cells.h"

#include "selectable_cell.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <iterator>
#include <memory>
#include <tuple>
#include <utility>
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

    bool operator<(const Cells& other) const
    {
        return std::tie(parent, row, column) < std::tie(other.parent, other.row, other.column);
    }
};

/// The cells of some ranges by their places, which a move turns into other places. Whole ranges are
/// taken as they are, as long as none shares a row with another; then cell by cell gives the same.
class MovedCells
{
public:
    MovedCells(QItemSelection ranges, const RowMove& move)
        : m_ranges(std::move(ranges)), m_move(move)
    {
        m_cells.reserve(std::size_t(m_ranges.size()) + 4);
        for (int range = 0; range < m_ranges.size(); ++range)
            add(range);
    }

    QItemSelection afterMove();

private:
    int numberOf(int range, const QModelIndex& parent);
    void add(int place);
    void addWhereItGoes(const Cells& cells);
    void findParents();
    void sortCells();
    bool areApart() const;
    void takeApart();
    void joinColumns();
    void joinRows();
    QItemSelection toSelection() const;

    QItemSelection m_ranges;
    RowMove m_move;
    static constexpr int from = 0;
    static constexpr int firstOther = 2;
    /// The number of where the rows go.
    const int m_to = m_move.from == m_move.to ? from : from + 1;
    /// Of each other number, a range whose parent it is. It stays below it, so no parent has to be
    /// followed through the move.
    std::vector<int> m_rangesBelow;
    QModelIndex m_lastParent;
    /// Where the parents are after the move, in the stock model's order: the numbers from then on.
    std::vector<QModelIndex> m_parents;
    std::vector<Cells> m_cells;
};

// A parent that comes again later may have two numbers until the move is done.
int MovedCells::numberOf(int range, const QModelIndex& parent)
{
    if (parent == m_move.from)
        return from;
    if (parent == m_move.to)
        return m_to;
    if (m_rangesBelow.empty() || parent != m_lastParent) {
        m_rangesBelow.push_back(range);
        m_lastParent = parent;
    }
    return firstOther + int(m_rangesBelow.size()) - 1;
}

void MovedCells::add(int place)
{
    const QItemSelectionRange& range = m_ranges.at(place);
    const QModelIndex& topLeft = range.topLeft();
    const QModelIndex& bottomRight = range.bottomRight();
    const bool isCell = topLeft == bottomRight;
    if (isCell ? !topLeft.isValid() : !range.isValid())
        return;
    const QModelIndex parent = topLeft.parent();
    const int number = numberOf(place, parent);
    if (isCell) {
        if (canBeSelected(topLeft))
            addWhereItGoes({number, topLeft.row(), topLeft.column(), 1, 1});
        return;
    }
    const QAbstractItemModel* model = range.model();
    const auto cellCanBe = [&](int row, int column) {
        return canBeSelected(model->index(row, column, parent));
    };
    // Rows of which all cells can be selected are taken together.
    int first = range.top();
    for (int row = range.top(); row <= range.bottom() + 1; ++row) {
        int column = range.left();
        while (row <= range.bottom() && column <= range.right() && cellCanBe(row, column))
            ++column;
        if (row <= range.bottom() && column > range.right())
            continue;
        if (row > first)
            addWhereItGoes({number, first, range.left(), row - first, range.width()});
        first = row + 1;
        for (int each = range.left(); row <= range.bottom() && each <= range.right(); ++each) {
            if (each < column || (each > column && cellCanBe(row, each)))
                addWhereItGoes({number, row, each, 1, 1});
        }
    }
}

void MovedCells::addWhereItGoes(const Cells& cells)
{
    const int count = m_move.last - m_move.first + 1;
    const int target = m_to == from && m_move.row > m_move.last ? m_move.row - count : m_move.row;
    const auto addPart = [&](int parent, int top, int bottom, int shift) {
        if (top > bottom)
            return;
        // What comes to lie in two parts on either side of the moved rows.
        if (parent == m_to && shift + top < target && shift + bottom >= target) {
            m_cells.push_back(
                {parent, shift + top, cells.column, target - shift - top, cells.columns});
            top = target - shift;
        }
        if (parent == m_to && shift + top >= target)
            shift += count;
        m_cells.push_back({parent, shift + top, cells.column, bottom - top + 1, cells.columns});
    };
    const int bottom = cells.row + cells.rows - 1;
    if (cells.parent != from) {
        addPart(cells.parent, cells.row, bottom, 0);
        return;
    }
    addPart(from, cells.row, std::min(bottom, m_move.first - 1), 0);
    const int top = std::max(cells.row, m_move.first);
    const int last = std::min(bottom, m_move.last);
    if (top <= last)
        m_cells.push_back(
            {m_to, top + target - m_move.first, cells.column, last - top + 1, cells.columns});
    addPart(from, std::max(cells.row, m_move.last + 1), bottom, -count);
}

void MovedCells::findParents()
{
    using Numbered = std::pair<QModelIndex, int>;
    std::vector<Numbered> parents{{m_move.from, from}, {m_move.to, m_to}};
    parents.reserve(firstOther + m_rangesBelow.size());
    for (const int range : m_rangesBelow)
        parents.emplace_back(m_ranges.at(range).topLeft().parent(), int(parents.size()));
    if (!std::is_sorted(parents.begin() + firstOther, parents.end()))
        std::sort(parents.begin() + firstOther, parents.end());
    std::sort(parents.begin(), parents.begin() + firstOther);
    std::inplace_merge(parents.begin(), parents.begin() + firstOther, parents.end());

    std::vector<int> places(parents.size());
    for (const Numbered& parent : parents) {
        if (m_parents.empty() || m_parents.back() != parent.first)
            m_parents.push_back(parent.first);
        places[std::size_t(parent.second)] = int(m_parents.size()) - 1;
    }
    for (Cells& cells : m_cells)
        cells.parent = places[std::size_t(cells.parent)];
}

void MovedCells::sortCells()
{
    if (!std::is_sorted(m_cells.begin(), m_cells.end()))
        std::stable_sort(m_cells.begin(), m_cells.end());
}

bool MovedCells::areApart() const
{
    const auto meet = [](const Cells& a, const Cells& b) {
        return a.parent == b.parent && b.row < a.row + a.rows &&
               (a.rows > 1 || b.rows > 1 || b.column < a.column + a.columns);
    };
    return std::adjacent_find(m_cells.begin(), m_cells.end(), meet) == m_cells.end();
}

void MovedCells::takeApart()
{
    const std::vector<Cells> whole = std::exchange(m_cells, {});
    for (const Cells& cells : whole) {
        for (int row = cells.row; row < cells.row + cells.rows; ++row) {
            for (int column = cells.column; column < cells.column + cells.columns; ++column)
                m_cells.push_back({cells.parent, row, column, 1, 1});
        }
    }
}

void MovedCells::joinColumns()
{
    std::size_t kept = 0;
    for (std::size_t next = 1; next < m_cells.size(); ++next) {
        Cells& last = m_cells[kept];
        const Cells& cell = m_cells[next];
        if (cell.parent == last.parent && cell.row == last.row &&
            cell.column == last.column + last.columns)
            last.columns += cell.columns;
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
            last.rows += cells.rows;
        else
            m_cells[++kept] = cells;
    }
    m_cells.resize(std::min(m_cells.size(), kept + 1));
}

QItemSelection MovedCells::toSelection() const
{
    const auto covers = [this](const QItemSelectionRange& range, const Cells& cells) {
        const QModelIndex& topLeft = range.topLeft();
        const QModelIndex& bottomRight = range.bottomRight();
        const QModelIndex& parent = m_parents[std::size_t(cells.parent)];
        return topLeft.row() == cells.row && topLeft.column() == cells.column &&
               bottomRight.row() - cells.row + 1 == cells.rows &&
               bottomRight.column() - cells.column + 1 == cells.columns &&
               topLeft.parent() == parent &&
               (topLeft == bottomRight || bottomRight.parent() == parent);
    };
    const auto rangeCovers = [&](int range, const Cells& cells) {
        return range < m_ranges.size() && covers(m_ranges.at(range), cells);
    };
    int same = 0;
    while (same < int(m_cells.size()) && rangeCovers(same, m_cells[std::size_t(same)]))
        ++same;
    if (same == int(m_cells.size()) && same == m_ranges.size())
        return m_ranges;

    // How far ahead an old range is looked for: a move puts single ranges elsewhere.
    constexpr int reach = 2;
    QItemSelection selection;
    selection.reserve(int(m_cells.size()));
    std::copy_n(m_ranges.begin(), same, std::back_inserter(selection));
    int next = same;
    for (std::size_t place = std::size_t(same); place < m_cells.size(); ++place) {
        const Cells& cells = m_cells[place];
        int found = next;
        while (found - next <= reach && !rangeCovers(found, cells))
            ++found;
        if (found - next <= reach) {
            selection.append(m_ranges.at(found));
            next = found + 1;
            continue;
        }
        const QModelIndex& parent = m_parents[std::size_t(cells.parent)];
        const QAbstractItemModel* model = m_ranges.constFirst().model();
        selection.append(QItemSelectionRange(
            model->index(cells.row, cells.column, parent),
            model->index(cells.row + cells.rows - 1, cells.column + cells.columns - 1, parent)));
    }
    return selection;
}

QItemSelection MovedCells::afterMove()
{
    findParents();
    sortCells();
    if (!areApart()) {
        takeApart();
        sortCells();
    }
    joinColumns();
    joinRows();
    return toSelection();
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
