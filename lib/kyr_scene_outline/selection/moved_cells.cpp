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

/// The cells of some ranges by their places, which a move turns into other places. Whole ranges are
/// taken as they are, as long as none shares a row with another; then cell by cell gives the same.
class MovedCells
{
public:
    MovedCells(QItemSelection ranges, const RowMove& move)
        : m_ranges(std::move(ranges)), m_move(move)
    {
        m_from = numberOf(move.from);
        m_to = numberOf(move.to);
        m_cells.reserve(std::size_t(m_ranges.size()) + 4);
        for (const QItemSelectionRange& range : m_ranges)
            add(range);
    }

    QItemSelection afterMove();

private:
    int numberOf(const QModelIndex& parent);
    void add(const QItemSelectionRange& range);
    void addWhereItGoes(const Cells& cells);
    void sortCells();
    bool areApart() const;
    void takeApart();
    void joinColumns();
    void joinRows();
    QItemSelection toSelection() const;

    QItemSelection m_ranges;
    RowMove m_move;
    /// Where parents were before the move, by number; then where they are.
    std::vector<QPersistentModelIndex> m_parents;
    std::vector<QModelIndex> m_movedParents;
    QHash<QModelIndex, int> m_numbers;
    QModelIndex m_lastParent;
    int m_lastNumber = -1;
    int m_from;
    int m_to;
    std::vector<Cells> m_cells;
};

int MovedCells::numberOf(const QModelIndex& parent)
{
    if (m_lastNumber >= 0 && parent == m_lastParent)
        return m_lastNumber;
    const auto found = m_numbers.constFind(parent);
    m_lastParent = parent;
    m_lastNumber = found != m_numbers.constEnd() ? *found : int(m_parents.size());
    if (found == m_numbers.constEnd()) {
        m_parents.emplace_back(parent);
        m_numbers.insert(parent, m_lastNumber);
    }
    return m_lastNumber;
}

void MovedCells::add(const QItemSelectionRange& range)
{
    const QModelIndex& topLeft = range.topLeft();
    const QModelIndex& bottomRight = range.bottomRight();
    const bool isCell = topLeft == bottomRight;
    if (isCell ? !topLeft.isValid() : !range.isValid())
        return;
    const QModelIndex parent = topLeft.parent();
    const int number = numberOf(parent);
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
    const int target = m_from == m_to && m_move.row > m_move.last ? m_move.row - count : m_move.row;
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
    if (cells.parent != m_from) {
        addPart(cells.parent, cells.row, bottom, 0);
        return;
    }
    addPart(m_from, cells.row, std::min(bottom, m_move.first - 1), 0);
    const int top = std::max(cells.row, m_move.first);
    const int last = std::min(bottom, m_move.last);
    if (top <= last)
        m_cells.push_back(
            {m_to, top + target - m_move.first, cells.column, last - top + 1, cells.columns});
    addPart(m_from, std::max(cells.row, m_move.last + 1), bottom, -count);
}

void MovedCells::sortCells()
{
    const auto before = [this](const Cells& a, const Cells& b) {
        if (a.parent != b.parent)
            return m_movedParents[std::size_t(a.parent)] < m_movedParents[std::size_t(b.parent)];
        return std::tie(a.row, a.column) < std::tie(b.row, b.column);
    };
    if (!std::is_sorted(m_cells.begin(), m_cells.end(), before))
        std::stable_sort(m_cells.begin(), m_cells.end(), before);
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
        return topLeft.row() == cells.row && topLeft.column() == cells.column &&
               bottomRight.row() - cells.row + 1 == cells.rows &&
               bottomRight.column() - cells.column + 1 == cells.columns &&
               (topLeft == bottomRight || range.isValid()) &&
               topLeft.parent() == m_movedParents[std::size_t(cells.parent)];
    };
    // How far ahead an old range is looked for: a move puts single ranges elsewhere.
    constexpr int reach = 2;
    QItemSelection selection;
    selection.reserve(int(m_cells.size()));
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
        const QModelIndex& parent = m_movedParents[std::size_t(cells.parent)];
        const QAbstractItemModel* model = m_ranges.constFirst().model();
        selection.append(QItemSelectionRange(
            model->index(cells.row, cells.column, parent),
            model->index(cells.row + cells.rows - 1, cells.column + cells.columns - 1, parent)));
    }
    return selection;
}

QItemSelection MovedCells::afterMove()
{
    m_movedParents.assign(m_parents.begin(), m_parents.end());
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
