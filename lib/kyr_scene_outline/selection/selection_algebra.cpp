#include "selection_algebra.h"

#include "range_set.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <tuple>
#include <utility>
#include <vector>

namespace kyr::selection {
namespace {

constexpr QItemSelectionModel::SelectionFlags changing =
    QItemSelectionModel::Select | QItemSelectionModel::Deselect | QItemSelectionModel::Toggle;

// The places of equal blocks in a list: a hash table in two arrays.
class BlockPlaces
{
public:
    BlockPlaces(const std::vector<Block>& blocks, std::size_t first)
        : m_blocks(blocks), m_next(blocks.size(), none)
    {
        std::size_t slots = 16;
        while (slots < 2 * (blocks.size() - first))
            slots *= 2;
        m_heads.assign(slots, none);
        // From the end, so that each chain runs from the first place to the last.
        for (std::size_t place = blocks.size(); place-- > first;)
            m_next[place] = std::exchange(m_heads[slotOf(blocks[place])], int(place));
    }

    /// Takes out the first place of `block` that is not before `from`; -1 when there is none.
    int take(const Block& block, int from)
    {
        int* link = &m_heads[slotOf(block)];
        while (*link != none) {
            const int place = *link;
            int* next = &m_next[std::size_t(place)];
            if (place >= from && m_blocks[std::size_t(place)] == block) {
                *link = *next;
                return place;
            }
            link = next;
        }
        return none;
    }

private:
    static constexpr int none = -1;

    std::size_t slotOf(const Block& block) const
    {
        std::uint64_t hash = std::uint32_t(block.top);
        for (const int part : {block.parent, block.bottom, block.left, block.right})
            hash = (hash ^ std::uint32_t(part)) * 0x9e3779b97f4a7c15u;
        return std::size_t(hash >> 32) & (m_heads.size() - 1);
    }

    const std::vector<Block>& m_blocks;
    std::vector<int> m_heads;
    std::vector<int> m_next;
};

std::vector<Block> blocksOf(const QItemSelection& ranges, ParentNumbers& numbers)
{
    std::vector<Block> blocks;
    blocks.reserve(std::size_t(ranges.size()));
    for (const QItemSelectionRange& range : ranges)
        blocks.push_back(numbers.blockOf(range));
    return blocks;
}

// Copies what it returns alone; to erase the rest would first copy all of a shared list.
QItemSelection rangesFrom(const QItemSelection& ranges, int first)
{
    QItemSelection rest;
    rest.reserve(ranges.size() - first);
    std::copy(ranges.begin() + first, ranges.end(), std::back_inserter(rest));
    return rest;
}

// Whether no block of one list shares rows with one of the other, where a single walk can tell.
bool areApart(const std::vector<Block>& a, const std::vector<Block>& b)
{
    if (!areInOrder(a) || !areInOrder(b))
        return false;
    for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
        if (a[i].parent == b[j].parent && a[i].top <= b[j].bottom && b[j].top <= a[i].bottom)
            return false;
        if (std::tie(a[i].parent, a[i].top) < std::tie(b[j].parent, b[j].top))
            ++i;
        else
            ++j;
    }
    return true;
}

// Drops pairs of equal ranges; false when what is left shares no cells either. The stock model
// passes over some of the pairs and leaves them to the comparison of cells, which shows where
// ranges overlap; the same pairs stay here.
bool removeEqualRanges(QItemSelection& deselected, QItemSelection& selected, ParentNumbers& numbers)
{
    int same = 0;
    const int shorter = std::min(deselected.size(), selected.size());
    while (same < shorter && deselected.at(same) == selected.at(same))
        ++same;

    if (same == deselected.size() || same == selected.size()) {
        deselected = rangesFrom(deselected, same);
        selected = rangesFrom(selected, same);
        return false;
    }
    const std::vector<Block> wanted = blocksOf(deselected, numbers);
    const std::vector<Block> offered = blocksOf(selected, numbers);
    if (same == 0 && areApart(wanted, offered))
        return false;
    BlockPlaces places(offered, std::size_t(same));
    std::vector<bool> kept(std::size_t(selected.size()), true);
    std::fill_n(kept.begin(), same, false);
    QItemSelection deselectedRest;
    bool paired = same > 0;
    int from = same;
    for (int i = same; i < deselected.size(); ++i) {
        const int place = places.take(wanted[std::size_t(i)], from);
        if (place >= 0) {
            kept[std::size_t(place)] = false;
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
        if (kept[std::size_t(i)])
            selectedRest.append(selected.at(i));
    }
    deselected = std::move(deselectedRest);
    selected = std::move(selectedRest);
    return !selected.isEmpty() && !deselected.isEmpty();
}

// Takes the cells of `others` out of `ranges`; true when they shared any.
bool subtract(QItemSelection& ranges, const QItemSelection& others, ParentNumbers& numbers)
{
    RangeSet rest(numbers, ranges);
    const bool shared = rest.cut(blocksOf(others, numbers));
    if (shared)
        ranges = rest.toSelection();
    return shared;
}

QItemSelection joined(QItemSelection first, const QItemSelection& second)
{
    first.append(second);
    return first;
}

} // namespace

QItemSelection validRanges(const QItemSelection& ranges)
{
    const auto isValid = [](const QItemSelectionRange& range) {
        // Half of the test tells for a single cell, and without asking the model.
        const QModelIndex& topLeft = range.topLeft();
        const QModelIndex& bottomRight = range.bottomRight();
        return topLeft == bottomRight ? topLeft.isValid() : range.isValid();
    };
    if (std::all_of(ranges.begin(), ranges.end(), isValid))
        return ranges;
    QItemSelection valid;
    std::copy_if(ranges.begin(), ranges.end(), std::back_inserter(valid), isValid);
    return valid;
}

QItemSelection merged(const QItemSelection& ranges, const QItemSelection& other,
                      QItemSelectionModel::SelectionFlags command)
{
    if (other.isEmpty() || !(command & changing))
        return ranges;
    const bool adds = !(command & QItemSelectionModel::Deselect);
    if (ranges.isEmpty())
        return adds ? validRanges(other) : ranges;

    ParentNumbers numbers;
    RangeSet result(numbers, ranges);
    if (!adds) {
        result.cutShared(other, nullptr);
        return result.toSelection();
    }
    if (!(command & QItemSelectionModel::Toggle)) {
        result.cutShared(other, nullptr);
        return joined(result.toSelection(), validRanges(other));
    }
    RangeSet added(numbers, other);
    result.cutShared(other, &added);
    return joined(result.toSelection(), added.toSelection());
}

QItemSelection expanded(const QItemSelection& selection, const QAbstractItemModel& model,
                        QItemSelectionModel::SelectionFlags command)
{
    ParentNumbers numbers;
    RangeSet result(numbers, {});
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
    if (before == after)
        return {};
    Difference change{after, before};
    if (before.isEmpty() || after.isEmpty())
        return change;
    ParentNumbers numbers;
    if (!removeEqualRanges(change.deselected, change.selected, numbers))
        return change;
    const QItemSelection selected = change.selected;
    if (subtract(change.selected, change.deselected, numbers))
        subtract(change.deselected, selected, numbers);
    return change;
}

} // namespace kyr::selection
