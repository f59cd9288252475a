#include "selection_algebra.h"

#include "range_set.h"

#include <QAbstractItemModel>
#include <QHash>

namespace kyr::selection {
namespace {

constexpr QItemSelectionModel::SelectionFlags changing =
    QItemSelectionModel::Select | QItemSelectionModel::Deselect | QItemSelectionModel::Toggle;

struct RangeKey
{
    QModelIndex topLeft;
    QModelIndex bottomRight;
    friend bool operator==(const RangeKey& a, const RangeKey& b)
    {
        return a.topLeft == b.topLeft && a.bottomRight == b.bottomRight;
    }
    friend uint qHash(const RangeKey& key, uint seed)
    {
        return qHash(key.topLeft) * 31u + qHash(key.bottomRight) + seed;
    }
};

RangeKey keyOf(const QItemSelectionRange& range)
{
    return {range.topLeft(), range.bottomRight()};
}

// Drops the ranges that both lists hold, one for one.
void removeCommon(QItemSelection& first, QItemSelection& second)
{
    int start = 0;
    const int shorter = std::min(first.size(), second.size());
    while (start < shorter && first.at(start) == second.at(start))
        ++start;
    QHash<RangeKey, int> counts;
    counts.reserve(second.size() - start);
    for (int i = start; i < second.size(); ++i)
        ++counts[keyOf(second.at(i))];

    QHash<RangeKey, int> common;
    QItemSelection firstRest;
    for (int i = start; i < first.size(); ++i) {
        const auto count = counts.find(keyOf(first.at(i)));
        if (count != counts.end() && *count > 0) {
            --*count;
            ++common[count.key()];
        } else {
            firstRest.append(first.at(i));
        }
    }
    QItemSelection secondRest;
    for (int i = start; i < second.size(); ++i) {
        const auto count = common.find(keyOf(second.at(i)));
        if (count != common.end() && *count > 0)
            --*count;
        else
            secondRest.append(second.at(i));
    }
    first = std::move(firstRest);
    second = std::move(secondRest);
}

// What is left of `ranges` without the cells of `others`; true when they shared any.
bool subtract(QItemSelection& ranges, const QItemSelection& others)
{
    RangeSet rest(ranges);
    bool shared = false;
    for (const QItemSelectionRange& other : others)
        shared = rest.cut(other) || shared;
    if (shared)
        ranges = rest.toSelection();
    return shared;
}

} // namespace

QItemSelection merged(const QItemSelection& ranges, const QItemSelection& other,
                      QItemSelectionModel::SelectionFlags command)
{
    if (other.isEmpty() || !(command & changing))
        return ranges;
    const bool toggles = command & QItemSelectionModel::Toggle;
    const bool adds = !(command & QItemSelectionModel::Deselect);
    RangeSet result(ranges);
    RangeSet added;
    if (toggles && adds)
        added = RangeSet(other);
    result.cutShared(other, toggles && adds ? &added : nullptr);

    QItemSelection selection = result.toSelection();
    if (!adds)
        return selection;
    if (toggles) {
        selection.append(added.toSelection());
    } else {
        for (const QItemSelectionRange& range : other) {
            if (range.isValid())
                selection.append(range);
        }
    }
    return selection;
}

QItemSelection expanded(const QItemSelection& selection, const QAbstractItemModel& model,
                        QItemSelectionModel::SelectionFlags command)
{
    RangeSet result;
    const auto add = [&result](const QModelIndex& topLeft, const QModelIndex& bottomRight) {
        const QItemSelection range(topLeft, bottomRight);
        result.cutShared(range, nullptr);
        for (const QItemSelectionRange& part : range)
            result.append(part);
    };
    if (command & QItemSelectionModel::Rows) {
        for (const QItemSelectionRange& range : selection) {
            const QModelIndex parent = range.parent();
            add(model.index(range.top(), 0, parent),
                model.index(range.bottom(), model.columnCount(parent) - 1, parent));
        }
    }
    if (command & QItemSelectionModel::Columns) {
        for (const QItemSelectionRange& range : selection) {
            const QModelIndex parent = range.parent();
            add(model.index(0, range.left(), parent),
                model.index(model.rowCount(parent) - 1, range.right(), parent));
        }
    }
    return result.toSelection();
}

Difference difference(const QItemSelection& before, const QItemSelection& after)
{
    Difference change{after, before};
    if (before == after)
        return {};
    if (before.isEmpty() || after.isEmpty())
        return change;
    removeCommon(change.deselected, change.selected);
    if (change.selected.isEmpty() || change.deselected.isEmpty())
        return change;
    const QItemSelection selected = change.selected;
    if (subtract(change.selected, change.deselected))
        subtract(change.deselected, selected);
    return change;
}

} // namespace kyr::selection
