#pragma once

#include <panel/arrangement/sort_key.h>

#include <QString>

#include <algorithm>
#include <utility>
#include <vector>

namespace kyr::panel {

/// A row of an arranged tree: one of the source, or a group, which has no place in the source.
struct ArrangedRow
{
    using List = std::vector<ArrangedRow*>;

    ArrangedRow* sourceParent = nullptr; ///< Null for groups.
    List sourceChildren;
    int sourceRow = -1;
    bool matches = true;
    bool marked = false; ///< For the time of one operation.

    ArrangedRow* shownParent = nullptr; ///< Null while the row does not show.
    List shownChildren;
    int shownRow = -1;

    SortKey key;  ///< Read where rows are sorted.
    QString type; ///< Read where rows are grouped; what a group collects.

    bool isGroup() const { return sourceParent == nullptr; }
    bool isShown() const { return shownParent != nullptr; }
    void append(ArrangedRow* child)
    {
        child->shownParent = this;
        child->shownRow = int(shownChildren.size());
        shownChildren.push_back(child);
    }
    void numberShown(int first = 0)
    {
        for (auto row = std::size_t(first); row < shownChildren.size(); ++row)
            shownChildren[row]->shownRow = int(row);
    }
    void numberSource(int first = 0)
    {
        for (auto row = std::size_t(first); row < sourceChildren.size(); ++row)
            sourceChildren[row]->sourceRow = int(row);
    }
};

inline ArrangedRow* shownParentOf(const ArrangedRow* row)
{
    return row->shownParent;
}

/// Rows with the same owner, in the order in which the owners first come up.
template <typename Owner>
std::vector<std::pair<ArrangedRow*, ArrangedRow::List>> rowsByOwner(const ArrangedRow::List& rows,
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

} // namespace kyr::panel
