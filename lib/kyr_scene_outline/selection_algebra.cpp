#include "selection_algebra.h"

#include "range_set.h"

#include <QAbstractItemModel>
#include <QHash>

#include <algorithm>
#include <vector>

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

// The places of each range in a list, looked up from a place onwards.
class RangePlaces
{
public:
    RangePlaces(const QItemSelection& ranges, int first)
    {
        m_places.reserve(ranges.size() - first);
        for (int place = first; place < ranges.size(); ++place)
            m_places[keyOf(ranges.at(place))].push_back(place);
    }

    /// Takes out the first place of `range` that is not before `from`; -1 when there is none.
    int take(const QItemSelectionRange& range, int from)
    {
        const auto found = m_places.find(keyOf(range));
        if (found == m_places.end())
            return -1;
        const auto place = std::lower_bound(found->begin(), found->end(), from);
        if (place == found->end())
            return -1;
        const int taken = *place;
        found->erase(place);
        return taken;
    }

private:
    QHash<RangeKey, std::vector<int>> m_places;
};

// Drops pairs of equal ranges. The stock model passes over some of the pairs and leaves them to
// the comparison of cells, which shows where ranges overlap; the same pairs stay here.
void removeEqualRanges(QItemSelection& deselected, QItemSelection& selected)
{
    int same = 0;
    const int shorter = std::min(deselected.size(), selected.size());
    while (same < shorter && deselected.at(same) == selected.at(same))
        ++same;

    RangePlaces places(selected, same);
    std::vector<bool> kept(static_cast<std::size_t>(selected.size()), true);
    std::fill_n(kept.begin(), same, false);
    QItemSelection deselectedRest;
    bool paired = same > 0;
    int from = same;
    for (int i = same; i < deselected.size(); ++i) {
        const int place = places.take(deselected.at(i), from);
        if (place >= 0) {
            kept[static_cast<std::size_t>(place)] = false;
            paired = true;
            from = place;
            continue;
        }
        deselectedRest.append(deselected.at(i));
        // After a round without a pair the stock model skips the range that follows.
        if (!paired && i + 1 < deselected.size())
            deselectedRest.append(deselected.at(++i));
        paired = false;
        from = same;
    }
    QItemSelection selectedRest;
    for (int i = same; i < selected.size(); ++i) {
        if (kept[static_cast<std::size_t>(i)])
            selectedRest.append(selected.at(i));
    }
    deselected = std::move(deselectedRest);
    selected = std::move(selectedRest);
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
    removeEqualRanges(change.deselected, change.selected);
    if (change.selected.isEmpty() || change.deselected.isEmpty())
        return change;
    const QItemSelection selected = change.selected;
    if (subtract(change.selected, change.deselected))
        subtract(change.deselected, selected);
    return change;
}

} // namespace kyr::selection
