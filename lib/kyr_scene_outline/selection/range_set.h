#pragma once

#include <QHash>
#include <QItemSelection>

#include <array>
#include <cstdint>
#include <set>
#include <vector>

namespace kyr::selection {

/// Cells under one parent; `parent` is a number given by the list that the block belongs to.
struct Block
{
    int parent;
    int top, left, bottom, right;

    friend bool operator==(const Block& a, const Block& b)
    {
        return a.parent == b.parent && a.top == b.top && a.left == b.left && a.bottom == b.bottom &&
               a.right == b.right;
    }
};

/// Whether blocks follow one another without sharing rows.
bool areInOrder(const std::vector<Block>& blocks);

/// Gives the parents of selection ranges numbers, so that ranges compare as plain integers.
class ParentNumbers
{
public:
    /// `range` must be valid.
    Block blockOf(const QItemSelectionRange& range);
    QItemSelectionRange rangeOf(const Block& block) const;

private:
    struct Key
    {
        const QAbstractItemModel* model;
        QModelIndex parent;
        friend bool operator==(const Key& a, const Key& b)
        {
            return a.parent == b.parent && a.model == b.model;
        }
        friend uint qHash(const Key& key, uint seed)
        {
            return qHash(key.parent) ^ qHash(key.model, seed);
        }
    };

    QHash<Key, int> m_numbers;
    std::vector<Key> m_keys;
    int m_last = -1;
};

/// An ordered list of selection ranges from which rectangles of cells can be cut.
/// Cuts behave as `QItemSelection::merge` makes them: a range that is hit leaves its place, and
/// what is left of it goes to the end of the list, upper rows first, then lower rows, left columns
/// and right columns. Ranges may overlap.
/// Where this list and the other one run down the rows, as selections mostly do, all cuts are one
/// walk over both. Otherwise the first few look-ups scan the list, and from then on each costs
/// O(log n) and the ranges it hits.
class RangeSet
{
public:
    /// Invalid ranges are left out. Sets that share `numbers` may exchange blocks.
    RangeSet(ParentNumbers& numbers, const QItemSelection& ranges);

    void append(const QItemSelectionRange& range);

    /// Cuts the cells of `blocks` out, one block at a time; true when there were any.
    bool cut(const std::vector<Block>& blocks);

    /// Cuts what the set and `ranges` share out of this set and of `other`, one shared rectangle
    /// at a time, in the order of `ranges` and then of this set's list. `other` may be null.
    void cutShared(const QItemSelection& ranges, RangeSet* other);

    QItemSelection toSelection() const;

private:
    struct Entry
    {
        Block block;
        /// Place in `m_ranges` for a range that is still whole, or one of the marks below.
        int source;
    };
    static constexpr int remainder = -1;
    static constexpr int gone = -2;

    /// Orders entries by parent, then by size class, then by first row.
    struct Position
    {
        int parent;
        int sizeClass;
        int top;
        int entry;
        bool operator<(const Position& other) const;
    };

    void insert(const Block& block, int source);
    bool canWalkWith(const std::vector<Block>& blocks) const;
    template <typename Hit>
    void walk(const std::vector<Block>& blocks, Hit hit);
    bool cutWalking(const std::vector<Block>& blocks);
    bool cut(const Block& block);
    void cutEntry(int entry, const Block& block);
    void buildIndex();
    Position positionOf(int entry);
    void findHits(const Block& block);
    template <typename Iterator>
    void collect(Iterator position, Iterator end, const Block& block, int sizeClass);
    std::vector<Position>::const_iterator builtFrom(const Position& first);
    void split(const Block& whole, const Block& block);

    ParentNumbers& m_numbers;
    QItemSelection m_ranges;
    std::vector<Entry> m_entries;
    /// Entries of the time when the index was built, and those that came later.
    std::vector<Position> m_built;
    std::set<Position> m_added;
    /// Where the last look-up in `m_built` ended, per size class: the next one is often near.
    std::array<std::size_t, 32> m_cursors{};
    std::uint32_t m_sizeClasses = 0; // one bit for each class in use
    std::vector<int> m_hits;         // of the last look-up, in list order
    int m_scans = 0;
    bool m_indexed = false;
};

} // namespace kyr::selection
