#include "range_set.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <tuple>
#include <utility>

namespace kyr::selection {
namespace {

// Scanning this often is cheaper than building the index.
constexpr int scansBeforeIndexing = 8;
// How far a look-up follows the one before it until it searches.
constexpr std::size_t followedPositions = 8;

bool intersects(const Block& a, const Block& b)
{
    return a.top <= b.bottom && b.top <= a.bottom && a.left <= b.right && b.left <= a.right &&
           a.parent == b.parent;
}

Block intersected(const Block& a, const Block& b)
{
    return {a.parent, std::max(a.top, b.top), std::max(a.left, b.left),
            std::min(a.bottom, b.bottom), std::min(a.right, b.right)};
}

// Blocks of class c span 2^c to 2^(c+1) - 1 rows.
int sizeClassOf(const Block& block)
{
    int sizeClass = 0;
    for (int rows = block.bottom - block.top + 1; rows > 1; rows >>= 1)
        ++sizeClass;
    return sizeClass;
}

bool isBefore(const Block& a, const Block& b)
{
    return a.parent < b.parent || (a.parent == b.parent && a.bottom < b.top);
}

} // namespace

bool areInOrder(const std::vector<Block>& blocks)
{
    const auto isMisplaced = [](const Block& a, const Block& b) { return !isBefore(a, b); };
    return std::adjacent_find(blocks.begin(), blocks.end(), isMisplaced) == blocks.end();
}

Block ParentNumbers::blockOf(const QItemSelectionRange& range)
{
    // Each question to a range is a call into Qt; those to an index are not.
    const QModelIndex& topLeft = range.topLeft();
    const QModelIndex& bottomRight = range.bottomRight();
    const Key key{topLeft.model(), topLeft.parent()};
    if (m_last < 0 || !(m_keys[std::size_t(m_last)] == key)) {
        const auto found = m_numbers.constFind(key);
        if (found != m_numbers.constEnd()) {
            m_last = *found;
        } else {
            m_last = int(m_keys.size());
            m_numbers.insert(key, m_last);
            m_keys.push_back(key);
        }
    }
    return {m_last, topLeft.row(), topLeft.column(), bottomRight.row(), bottomRight.column()};
}

QItemSelectionRange ParentNumbers::rangeOf(const Block& block) const
{
    const Key& key = m_keys[std::size_t(block.parent)];
    return {key.model->index(block.top, block.left, key.parent),
            key.model->index(block.bottom, block.right, key.parent)};
}

bool RangeSet::Position::operator<(const Position& other) const
{
    return std::tie(parent, sizeClass, top, entry) <
           std::tie(other.parent, other.sizeClass, other.top, other.entry);
}

RangeSet::RangeSet(ParentNumbers& numbers, const QItemSelection& ranges)
    : m_numbers(numbers), m_ranges(ranges)
{
    m_entries.reserve(std::size_t(ranges.size()));
    for (int source = 0; source < ranges.size(); ++source) {
        if (ranges.at(source).isValid())
            insert(m_numbers.blockOf(ranges.at(source)), source);
    }
}

void RangeSet::append(const QItemSelectionRange& range)
{
    if (!range.isValid())
        return;
    m_ranges.append(range);
    insert(m_numbers.blockOf(range), m_ranges.size() - 1);
}

void RangeSet::insert(const Block& block, int source)
{
    m_entries.push_back({block, source});
    if (m_indexed)
        m_added.insert(m_added.end(), positionOf(int(m_entries.size()) - 1));
}

// Every entry passes here before it can be looked for, so this notes its size class.
RangeSet::Position RangeSet::positionOf(int entry)
{
    const Block& block = m_entries[std::size_t(entry)].block;
    const int sizeClass = sizeClassOf(block);
    m_sizeClasses |= 1u << sizeClass;
    return {block.parent, sizeClass, block.top, entry};
}

void RangeSet::buildIndex()
{
    m_indexed = true;
    m_built.reserve(m_entries.size());
    for (int entry = 0; entry < int(m_entries.size()); ++entry) {
        if (m_entries[std::size_t(entry)].source != gone)
            m_built.push_back(positionOf(entry));
    }
    if (!std::is_sorted(m_built.begin(), m_built.end()))
        std::sort(m_built.begin(), m_built.end());
}

std::vector<RangeSet::Position>::const_iterator RangeSet::builtFrom(const Position& first)
{
    std::size_t& cursor = m_cursors[std::size_t(first.sizeClass)];
    if (cursor == 0 || m_built[cursor - 1] < first) {
        const std::size_t end = std::min(cursor + followedPositions, m_built.size());
        for (std::size_t place = cursor; place < end; ++place) {
            if (!(m_built[place] < first)) {
                cursor = place;
                return m_built.begin() + std::ptrdiff_t(place);
            }
        }
    }
    const auto found = std::lower_bound(m_built.cbegin(), m_built.cend(), first);
    cursor = std::size_t(found - m_built.cbegin());
    return found;
}

template <typename Iterator>
void RangeSet::collect(Iterator position, Iterator end, const Block& block, int sizeClass)
{
    for (; position != end && position->parent == block.parent &&
           position->sizeClass == sizeClass && position->top <= block.bottom;
         ++position) {
        const Entry& entry = m_entries[std::size_t(position->entry)];
        if (entry.source != gone && intersects(entry.block, block))
            m_hits.push_back(position->entry);
    }
}

void RangeSet::findHits(const Block& block)
{
    m_hits.clear();
    if (!m_indexed && m_scans++ >= scansBeforeIndexing)
        buildIndex();
    if (!m_indexed) {
        for (std::size_t entry = 0; entry < m_entries.size(); ++entry) {
            if (m_entries[entry].source != gone && intersects(m_entries[entry].block, block))
                m_hits.push_back(int(entry));
        }
        return;
    }
    for (int sizeClass = 0; m_sizeClasses >> sizeClass; ++sizeClass) {
        if (!(m_sizeClasses >> sizeClass & 1u))
            continue;
        const auto longest = (std::int64_t(1) << (sizeClass + 1)) - 1;
        const auto top = std::max<std::int64_t>(0, block.top - longest + 1);
        const Position first{block.parent, sizeClass, int(top), -1};
        collect(builtFrom(first), m_built.cend(), block, sizeClass);
        if (!m_added.empty())
            collect(m_added.lower_bound(first), m_added.cend(), block, sizeClass);
    }
    std::sort(m_hits.begin(), m_hits.end());
}

bool RangeSet::canWalkWith(const std::vector<Block>& blocks) const
{
    if (m_indexed || m_entries.empty() || blocks.empty() || !areInOrder(blocks))
        return false;
    const auto sharesColumns = [&first = blocks.front()](const Block& block) {
        return block.left == first.left && block.right == first.right;
    };
    const auto isMisplaced = [](const Entry& a, const Entry& b) {
        return !isBefore(a.block, b.block);
    };
    return std::all_of(blocks.begin(), blocks.end(), sharesColumns) &&
           std::all_of(m_entries.begin(), m_entries.end(),
                       [&](const Entry& entry) {
                           return entry.source >= 0 && sharesColumns(entry.block);
                       }) &&
           std::adjacent_find(m_entries.begin(), m_entries.end(), isMisplaced) == m_entries.end();
}

// Calls `hit(entry, block)` for every pair that shares rows; the entries are those of the
// beginning.
template <typename Hit>
void RangeSet::walk(const std::vector<Block>& blocks, Hit hit)
{
    const int end = int(m_entries.size());
    const auto at = [this](int entry) { return m_entries[std::size_t(entry)].block; };
    int next = 0;
    for (const Block& block : blocks) {
        while (next < end && isBefore(at(next), block))
            ++next;
        for (int entry = next; entry < end && !isBefore(block, at(entry)); ++entry)
            hit(entry, block);
    }
}

bool RangeSet::cutWalking(const std::vector<Block>& blocks)
{
    constexpr int none = -1;
    const auto at = [this](int entry) { return m_entries[std::size_t(entry)].block; };
    bool any = false;
    // What the last cut left below it, the last part that it made.
    int rest = none;
    const auto cutOne = [&](int entry, const Block& block) {
        any = true;
        const bool leavesRest = at(entry).bottom > block.bottom;
        cutEntry(entry, block);
        rest = leavesRest ? int(m_entries.size()) - 1 : none;
    };
    const int end = int(m_entries.size());
    int next = 0;
    for (const Block& block : blocks) {
        const int tail = std::exchange(rest, none);
        while (next < end && isBefore(at(next), block))
            ++next;
        for (; next < end && !isBefore(block, at(next)); ++next)
            cutOne(next, block);
        // It is behind all whole ranges in the list, and has no rest where one of these was hit.
        if (tail != none && !isBefore(at(tail), block)) {
            const int below = rest;
            cutOne(tail, block);
            rest = std::max(rest, below);
        }
    }
    return any;
}

bool RangeSet::cut(const std::vector<Block>& blocks)
{
    if (canWalkWith(blocks))
        return cutWalking(blocks);
    bool any = false;
    for (const Block& block : blocks)
        any = cut(block) || any;
    return any;
}

bool RangeSet::cut(const Block& block)
{
    findHits(block);
    for (const int entry : m_hits)
        cutEntry(entry, block);
    return !m_hits.empty();
}

void RangeSet::cutEntry(int entry, const Block& block)
{
    const Block whole = m_entries[std::size_t(entry)].block;
    if (m_indexed)
        m_added.erase({whole.parent, sizeClassOf(whole), whole.top, entry});
    m_entries[std::size_t(entry)].source = gone;
    split(whole, block);
}

void RangeSet::split(const Block& whole, const Block& block)
{
    Block rest = whole;
    if (block.top > rest.top) {
        insert({rest.parent, rest.top, rest.left, block.top - 1, rest.right}, remainder);
        rest.top = block.top;
    }
    if (block.bottom < rest.bottom) {
        insert({rest.parent, block.bottom + 1, rest.left, rest.bottom, rest.right}, remainder);
        rest.bottom = block.bottom;
    }
    if (block.left > rest.left) {
        insert({rest.parent, rest.top, rest.left, rest.bottom, block.left - 1}, remainder);
        rest.left = block.left;
    }
    if (block.right < rest.right)
        insert({rest.parent, rest.top, block.right + 1, rest.bottom, rest.right}, remainder);
}

void RangeSet::cutShared(const QItemSelection& ranges, RangeSet* other)
{
    if (m_entries.empty())
        return;
    std::vector<Block> blocks;
    blocks.reserve(std::size_t(ranges.size()));
    for (const QItemSelectionRange& range : ranges) {
        if (range.isValid())
            blocks.push_back(m_numbers.blockOf(range));
    }
    // All shared rectangles are those of the list before the first cut.
    std::vector<Block> shared;
    const auto share = [this, &shared](int entry, const Block& block) {
        shared.push_back(intersected(m_entries[std::size_t(entry)].block, block));
    };
    if (canWalkWith(blocks)) {
        walk(blocks, share);
    } else {
        for (const Block& block : blocks) {
            findHits(block);
            for (const int entry : m_hits)
                share(entry, block);
        }
    }
    cut(shared);
    if (other)
        other->cut(shared);
}

QItemSelection RangeSet::toSelection() const
{
    QItemSelection selection;
    selection.reserve(int(m_entries.size()));
    for (const Entry& entry : m_entries) {
        if (entry.source != gone)
            selection.append(entry.source == remainder ? m_numbers.rangeOf(entry.block)
                                                       : m_ranges.at(entry.source));
    }
    return selection;
}

} // namespace kyr::selection
