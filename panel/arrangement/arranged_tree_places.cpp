// Places in the lists of an arranged tree: rows that come, go and move, each with its signals.
// Functions that return false have found too many places to signal and made all anew instead.

#include "arranged_tree_model.h"

#include "arranged_tree_sorter.h"

#include <algorithm>
#include <iterator>

namespace kyr::panel {

namespace {

int depthOf(const ArrangedRow* row)
{
    int depth = 0;
    for (; row->sourceParent; row = row->sourceParent)
        ++depth;
    return depth;
}

/// Whether `a` is above `b` in the source with all its rows open.
bool comesEarlier(const ArrangedRow* a, const ArrangedRow* b)
{
    int below = depthOf(a) - depthOf(b);
    const bool aIsDeeper = below > 0;
    for (; below > 0; --below)
        a = a->sourceParent;
    for (; below < 0; ++below)
        b = b->sourceParent;
    if (a == b)
        return !aIsDeeper;
    for (; a->sourceParent != b->sourceParent; b = b->sourceParent)
        a = a->sourceParent;
    return a->sourceRow < b->sourceRow;
}

} // namespace

bool ArrangedTreeModel::precedes(const Row* a, const Row* b) const
{
    if (a->isGroup())
        return a->type < b->type;
    if (m_settings.sorting.role >= 0) {
        if (SortKey::precedes(a->key, b->key, m_settings.sorting.order))
            return true;
        if (SortKey::precedes(b->key, a->key, m_settings.sorting.order))
            return false;
    }
    return comesEarlier(a, b);
}

void ArrangedTreeModel::sort(Rows& rows) const
{
    std::sort(rows.begin(), rows.end(),
              [this](const Row* a, const Row* b) { return precedes(a, b); });
}

std::size_t ArrangedTreeModel::placeIn(const Rows& list, const Row* row) const
{
    const auto place =
        std::lower_bound(list.begin(), list.end(), row,
                         [this](const Row* a, const Row* b) { return precedes(a, b); });
    return std::size_t(place - list.begin());
}

bool ArrangedTreeModel::place(Row* parent, Rows rows)
{
    sort(rows);
    std::vector<std::pair<int, Rows>> runs;
    for (Row* row : rows) {
        const int at = int(placeIn(parent->shownChildren, row));
        if (runs.empty() || runs.back().first != at)
            runs.emplace_back(at, Rows());
        runs.back().second.push_back(row);
    }
    if (runs.size() > signalledPlaces)
        return rebuild();
    for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        const auto& [at, inserted] = *run;
        beginInsertRows(indexOf(parent), at, at + int(inserted.size()) - 1);
        parent->shownChildren.insert(parent->shownChildren.begin() + at, inserted.begin(),
                                     inserted.end());
        for (Row* row : inserted)
            row->shownParent = parent;
        parent->numberShown(at);
        endInsertRows();
    }
    return true;
}

/// Puts the rows in the order in which they show and tells which of them are neighbours.
std::vector<ArrangedTreeModel::Run> ArrangedTreeModel::runsOf(Rows& rows)
{
    std::sort(rows.begin(), rows.end(),
              [](const Row* a, const Row* b) { return a->shownRow < b->shownRow; });
    std::vector<Run> runs;
    for (const Row* row : rows) {
        if (runs.empty() || row->shownRow != runs.back().first + runs.back().count)
            runs.push_back({row->shownRow, 0});
        ++runs.back().count;
    }
    return runs;
}

bool ArrangedTreeModel::takeAway(Row* parent, Rows rows)
{
    const std::vector<Run> runs = runsOf(rows);
    if (runs.size() > signalledPlaces)
        return rebuild();
    for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        beginRemoveRows(indexOf(parent), run->first, run->first + run->count - 1);
        const auto first = parent->shownChildren.begin() + run->first;
        const Rows gone(first, first + run->count);
        parent->shownChildren.erase(first, first + run->count);
        parent->numberShown(run->first);
        clearShown(gone);
        endRemoveRows();
    }
    return true;
}

void ArrangedTreeModel::clearShown(Rows rows)
{
    while (!rows.empty()) {
        Row* row = rows.back();
        rows.pop_back();
        rows.insert(rows.end(), row->shownChildren.begin(), row->shownChildren.end());
        row->shownChildren.clear();
        row->shownParent = nullptr;
        row->shownRow = -1;
    }
}

/// Puts rows of one list where they belong now, the others being in order.
bool ArrangedTreeModel::reorder(const Rows& rows)
{
    for (auto& [parent, moved] : rowsByOwner(rows, shownParentOf)) {
        for (Row* row : moved)
            row->marked = true;
        Rows rest;
        std::remove_copy_if(parent->shownChildren.begin(), parent->shownChildren.end(),
                            std::back_inserter(rest), [](const Row* row) { return row->marked; });
        for (Row* row : moved)
            row->marked = false;
        Rows inPlace = moved;
        const std::vector<Run> runs = runsOf(inPlace);
        sort(moved);
        std::vector<std::size_t> places;
        for (const Row* row : moved)
            places.push_back(placeIn(rest, row));
        const bool together =
            runs.size() == 1 && inPlace == moved && places.front() == places.back();
        if (!together && moved.size() > signalledPlaces)
            return rebuild();
        // From the last on, each goes before the one that follows it.
        for (std::size_t i = together ? 1 : moved.size(); i-- > 0;) {
            const bool meets = !together && i + 1 < moved.size() && places[i] == places[i + 1];
            const Row* next = meets                     ? moved[i + 1]
                              : places[i] < rest.size() ? rest[places[i]]
                                                        : nullptr;
            moveRun(parent, moved[i]->shownRow, together ? int(moved.size()) : 1, parent,
                    next ? next->shownRow : int(parent->shownChildren.size()));
        }
    }
    return true;
}

void ArrangedTreeModel::moveRun(Row* from, int first, int count, Row* to, int target)
{
    // No move at all if it is its own neighbour.
    if (!beginMoveRows(indexOf(from), first, first + count - 1, indexOf(to), target))
        return;
    const auto begin = from->shownChildren.begin() + first;
    const Rows moved(begin, begin + count);
    from->shownChildren.erase(begin, begin + count);
    if (from == to && target > first)
        target -= count;
    to->shownChildren.insert(to->shownChildren.begin() + target, moved.begin(), moved.end());
    for (Row* row : moved)
        row->shownParent = to;
    from->numberShown(from == to ? std::min(first, target) : first);
    if (from != to)
        to->numberShown(target);
    endMoveRows();
}

/// Shows everything anew, from what is known of the rows. Always false.
bool ArrangedTreeModel::rebuild()
{
    beginResetModel();
    m_root.shownChildren.clear();
    m_groups.clear();
    for (Row& row : m_rows) {
        row.shownParent = nullptr;
        row.shownRow = -1;
        row.shownChildren.clear();
        row.marked = false;
    }
    Rows waiting(m_root.sourceChildren.rbegin(), m_root.sourceChildren.rend());
    while (!waiting.empty()) {
        Row* row = waiting.back();
        waiting.pop_back();
        if (row->matches)
            showRead(row);
        waiting.insert(waiting.end(), row->sourceChildren.rbegin(), row->sourceChildren.rend());
    }
    showGroups();
    sortAll();
    endResetModel();
    return false;
}

} // namespace kyr::panel
