// Which rows of an arranged tree show: those that match and, in a hierarchy, what leads to them.
// Functions that return false have made all anew instead.

#include "arranged_tree_model.h"

#include "arranged_tree_sorter.h"

#include <algorithm>
#include <iterator>

namespace kyr::panel {

namespace {

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

} // namespace

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
    for (auto& [group, rows] :
         rowsByOwner(matching, [this](Row* row) { return groupOf(row->type); })) {
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
    for (const auto& [parent, list] :
         rowsByOwner(tops, [](Row* row) { return row->sourceParent; })) {
        if (!place(parent, list))
            return false;
    }
    return true;
}

/// Hides rows that no longer match.
bool ArrangedTreeModel::hide(const Rows& rows)
{
    for (const auto& [parent, list] : rowsByOwner(rows, shownParentOf)) {
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

} // namespace kyr::panel
