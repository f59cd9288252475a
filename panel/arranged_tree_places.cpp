// Rows of an arranged tree that come, go and change places, each with its signals. Functions that
// return false have found too many places to signal and made everything anew instead.

#include "arranged_tree_model.h"

#include "arranged_tree_sorter.h"

#include <algorithm>
#include <iterator>

namespace kyr::panel {

namespace {

/// A change in more places than this comes as one reset.
constexpr std::size_t signalledPlaces = 64;

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

/// Rows with the same owner, in the order in which the owners first come up.
template <typename Owner>
std::vector<std::pair<ArrangedRow*, ArrangedRow::List>> byOwner(const ArrangedRow::List& rows,
                                                                const Owner& ownerOf)
{
    std::vector<std::pair<ArrangedRow*, ArrangedRow::List>> lists;
    for (ArrangedRow* row : rows) {
        ArrangedRow* owner = ownerOf(row);
        if (!owner)
            continue;
        auto list = std::find_if(lists.begin(), lists.end(),
                                 [owner](const auto& known) { return known.first == owner; });
        if (list == lists.end())
            list = lists.insert(lists.end(), {owner, {}});
        list->second.push_back(row);
    }
    return lists;
}

bool leadsToMatch(const ArrangedRow* row)
{
    ArrangedRow::List waiting = row->shownChildren;
    while (!waiting.empty()) {
        row = waiting.back();
        waiting.pop_back();
        if (row->matches)
            return true;
        waiting.insert(waiting.end(), row->shownChildren.begin(), row->shownChildren.end());
    }
    return false;
}

ArrangedRow* shownParentOf(const ArrangedRow* row)
{
    return row->shownParent;
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

/// Shows rows that have come to match.
bool ArrangedTreeModel::show(const Rows& matching)
{
    switch (m_settings.arrangement) {
    case Arrangement::Hierarchy:
        return showInHierarchy(matching);
    case Arrangement::Flat:
        return place(&m_root, matching);
    case Arrangement::ByType:
        break;
    }
    for (auto& [group, rows] : byOwner(matching, [this](Row* row) { return groupOf(row->type); })) {
        if (group->isShown()) {
            if (!place(group, rows))
                return false;
            signalData({group}, {m_countRole});
            continue;
        }
        sort(rows);
        for (Row* row : rows)
            group->append(row);
        place(&m_root, {group});
    }
    return true;
}

/// Shows the rows and what leads to them, each branch that was hidden with one insertion.
bool ArrangedTreeModel::showInHierarchy(const Rows& rows)
{
    Rows fresh;
    Rows parents;
    Rows tops;
    for (Row* row : rows) {
        while (row != &m_root && !row->isShown() && !row->marked) {
            Row* parent = row->sourceParent;
            row->marked = true;
            fresh.push_back(row);
            if (parent == &m_root || (parent->isShown() && !parent->marked)) {
                tops.push_back(row);
                break;
            }
            parents.push_back(parent);
            // Known to be on its way already, or the next to be put there.
            parent->shownChildren.push_back(row);
            row = parent;
        }
    }
    for (Row* parent : parents) {
        sort(parent->shownChildren);
        parent->numberShown();
        for (Row* child : parent->shownChildren)
            child->shownParent = parent;
    }
    for (Row* row : fresh)
        row->marked = false;
    for (const auto& [parent, list] : byOwner(tops, [](Row* row) { return row->sourceParent; })) {
        if (!place(parent, list))
            return false;
    }
    return true;
}

/// Hides rows that no longer match.
bool ArrangedTreeModel::hide(const Rows& rows)
{
    for (const auto& [parent, list] : byOwner(rows, shownParentOf)) {
        if (m_settings.arrangement == Arrangement::Hierarchy) {
            if (!hideInHierarchy(parent, list))
                return false;
        } else if (parent != &m_root && list.size() == parent->shownChildren.size()) {
            const QString type = parent->type;
            takeAway(&m_root, {parent});
            m_groups.erase(type);
        } else if (!takeAway(parent, list)) {
            return false;
        } else if (parent != &m_root) {
            signalData({parent}, {m_countRole});
        }
    }
    return true;
}

bool ArrangedTreeModel::hideInHierarchy(Row* parent, Rows rows)
{
    rows.erase(std::remove_if(rows.begin(), rows.end(), leadsToMatch), rows.end());
    if (rows.empty())
        return true;
    // What only led to them goes with them.
    while (parent != &m_root && !parent->matches && parent->shownChildren.size() == rows.size()) {
        rows = {parent};
        parent = parent->shownParent;
    }
    return takeAway(parent, rows);
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
    for (auto& [parent, moved] : byOwner(rows, shownParentOf)) {
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

void ArrangedTreeModel::moveInHierarchy(Row* from, const Rows& moved, Row* to)
{
    Rows shown;
    std::copy_if(moved.begin(), moved.end(), std::back_inserter(shown),
                 [](const Row* row) { return row->isShown(); });
    if (shown.empty() || !showInHierarchy({to}))
        return;
    if (m_settings.sorting.role >= 0 && shown.size() > signalledPlaces) {
        rebuild();
        return;
    }
    runsOf(shown);
    for (std::size_t end = shown.size(); end > 0;) {
        // Neighbours that stay neighbours go together.
        const std::size_t at = placeIn(to->shownChildren, shown[end - 1]);
        std::size_t first = end - 1;
        while (first > 0 && shown[first - 1]->shownRow + 1 == shown[first]->shownRow &&
               precedes(shown[first - 1], shown[first]) &&
               placeIn(to->shownChildren, shown[first - 1]) == at)
            --first;
        moveRun(from, shown[first]->shownRow, int(end - first), to, int(at));
        end = first;
    }
    if (from != &m_root && !from->matches && from->shownChildren.empty())
        hideInHierarchy(from->shownParent, {from});
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
