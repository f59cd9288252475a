#include "range_set.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <tuple>

namespace kyr::selection {
namespace {

// Scanning this often is cheaper than building the index.
constexpr int scansBeforeIndexing = 8;

bool intersects(const RangeSet::Block& a, const RangeSet::Block& b)
{
    return a.parent == b.parent && a.top <= b.bottom && b.top <= a.bottom && a.left <= b.right &&
           b.left <= a.right;
}

RangeSet::Block intersected(const RangeSet::Block& a, const RangeSet::Block& b)
{
    return {a.parent, std::max(a.top, b.top), std::max(a.left, b.left),
            std::min(a.bottom, b.bottom), std::min(a.right, b.right)};
}

// Blocks of class c span 2^c to 2^(c+1) - 1 rows.
int sizeClassOf(const RangeSet::Block& block)
{
    int sizeClass = 0;
    for (int rows = block.bottom - block.top + 1; rows > 1; rows >>= 1)
        ++sizeClass;
    return sizeClass;
}

} // namespace

bool RangeSet::Position::operator<(const Position& other) const
{
    return std::tie(parent, sizeClass, top, entry) <
           std::tie(other.parent, other.sizeClass, other.top, other.entry);
}

RangeSet::RangeSet(const QItemSelection& ranges)
{
    m_entries.reserve(static_cast<std::size_t>(ranges.size()));
    for (const QItemSelectionRange& range : ranges)
        append(range);
}

void RangeSet::append(const QItemSelectionRange& range)
{
    if (!range.isValid())
        return;
    m_ranges.append(range);
    insert({blockOf(range), range.model(), m_ranges.size() - 1, true});
}

int RangeSet::parentNumber(const QItemSelectionRange& range)
{
    const ParentKey key{range.model(), range.parent()};
    const auto found = m_parentNumbers.constFind(key);
    if (found != m_parentNumbers.constEnd())
        return *found;
    const int number = static_cast<int>(m_parents.size());
    m_parentNumbers.insert(key, number);
    m_parents.push_back(key.parent);
    m_sizeClasses.push_back(0);
    return number;
}

RangeSet::Block RangeSet::blockOf(const QItemSelectionRange& range)
{
    return {parentNumber(range), range.top(), range.left(), range.bottom(), range.right()};
}

void RangeSet::insert(Entry entry)
{
    m_entries.push_back(entry);
    if (m_indexed)
        index(static_cast<int>(m_entries.size()) - 1);
}

void RangeSet::index(int entry)
{
    const Block& block = m_entries[static_cast<std::size_t>(entry)].block;
    const int sizeClass = sizeClassOf(block);
    m_sizeClasses[static_cast<std::size_t>(block.parent)] |= 1u << sizeClass;
    m_positions.insert(m_positions.end(), {block.parent, sizeClass, block.top, entry});
}

// The living entries that share cells with `block`, in list order.
std::vector<int> RangeSet::hits(const Block& block)
{
    std::vector<int> found;
    if (!m_indexed && m_scans++ >= scansBeforeIndexing) {
        m_indexed = true;
        for (int entry = 0; entry < static_cast<int>(m_entries.size()); ++entry) {
            if (m_entries[static_cast<std::size_t>(entry)].alive)
                index(entry);
        }
    }
    if (!m_indexed) {
        for (std::size_t entry = 0; entry < m_entries.size(); ++entry) {
            if (m_entries[entry].alive && intersects(m_entries[entry].block, block))
                found.push_back(static_cast<int>(entry));
        }
        return found;
    }
    const std::uint32_t classes = m_sizeClasses[static_cast<std::size_t>(block.parent)];
    for (int sizeClass = 0; classes >> sizeClass; ++sizeClass) {
        if (!(classes >> sizeClass & 1u))
            continue;
        const auto longest = (std::int64_t(1) << (sizeClass + 1)) - 1;
        const auto first = std::max<std::int64_t>(0, block.top - longest + 1);
        auto position =
            m_positions.lower_bound({block.parent, sizeClass, static_cast<int>(first), -1});
        for (; position != m_positions.end() && position->parent == block.parent &&
               position->sizeClass == sizeClass && position->top <= block.bottom;
             ++position) {
            if (intersects(m_entries[static_cast<std::size_t>(position->entry)].block, block))
                found.push_back(position->entry);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

bool RangeSet::cut(const QItemSelectionRange& range)
{
    return range.isValid() && cut(blockOf(range));
}

bool RangeSet::cut(const Block& block)
{
    const std::vector<int> found = hits(block);
    for (const int number : found) {
        Entry& entry = m_entries[static_cast<std::size_t>(number)];
        entry.alive = false;
        if (m_indexed)
            m_positions.erase({block.parent, sizeClassOf(entry.block), entry.block.top, number});
        const Entry whole = entry;
        split(whole, block);
    }
    return !found.empty();
}

void RangeSet::split(const Entry& entry, const Block& block)
{
    Block rest = entry.block;
    const auto keep = [this, &entry](const Block& part) { insert({part, entry.model, -1, true}); };
    if (block.top > rest.top) {
        keep({rest.parent, rest.top, rest.left, block.top - 1, rest.right});
        rest.top = block.top;
    }
    if (block.bottom < rest.bottom) {
        keep({rest.parent, block.bottom + 1, rest.left, rest.bottom, rest.right});
        rest.bottom = block.bottom;
    }
    if (block.left > rest.left) {
        keep({rest.parent, rest.top, rest.left, rest.bottom, block.left - 1});
        rest.left = block.left;
    }
    if (block.right < rest.right)
        keep({rest.parent, rest.top, block.right + 1, rest.bottom, rest.right});
}

void RangeSet::cutShared(const QItemSelection& ranges, RangeSet* other)
{
    // All shared rectangles are those of the list before the first cut.
    std::vector<std::pair<Block, const QItemSelectionRange*>> shared;
    for (const QItemSelectionRange& range : ranges) {
        if (!range.isValid())
            continue;
        const Block block = blockOf(range);
        for (const int number : hits(block)) {
            shared.emplace_back(
                intersected(m_entries[static_cast<std::size_t>(number)].block, block), &range);
        }
    }
    for (const auto& [block, range] : shared) {
        cut(block);
        if (other) {
            Block others = block;
            others.parent = other->parentNumber(*range);
            other->cut(others);
        }
    }
}

QItemSelectionRange RangeSet::toRange(const Entry& entry) const
{
    if (entry.source >= 0)
        return m_ranges.at(entry.source);
    const Block& block = entry.block;
    const QModelIndex& parent = m_parents[static_cast<std::size_t>(block.parent)];
    return {entry.model->index(block.top, block.left, parent),
            entry.model->index(block.bottom, block.right, parent)};
}

QItemSelection RangeSet::toSelection() const
{
    QItemSelection selection;
    for (const Entry& entry : m_entries) {
        if (entry.alive)
            selection.append(toRange(entry));
    }
    return selection;
}

} // namespace kyr::selection
