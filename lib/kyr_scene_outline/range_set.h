#pragma once

#include <QHash>
#include <QItemSelection>

#include <cstdint>
#include <set>
#include <vector>

namespace kyr::selection {

/// An ordered list of selection ranges from which rectangles of cells can be cut.
/// Cuts behave as `QItemSelection::merge` makes them: a range that is hit leaves its place, and
/// what is left of it goes to the end of the list, upper rows first, then lower rows, left columns
/// and right columns. Ranges may overlap.
/// The first few look-ups scan the list; from then on each costs O(log n) and the ranges it hits.
class RangeSet
{
public:
    /// Cells under one parent; `parent` is the set's own number of that parent.
    struct Block
    {
        int parent;
        int top, left, bottom, right;
    };

    RangeSet() = default;
    explicit RangeSet(const QItemSelection& ranges);

    /// Invalid ranges are left out.
    void append(const QItemSelectionRange& range);

    /// Cuts the cells of `range` out of the set; true when there were any.
    bool cut(const QItemSelectionRange& range);

    /// Cuts what the set and `range` share out of both this set and `other`, one shared rectangle
    /// at a time in the order of this set's list. `other` may be null.
    void cutShared(const QItemSelection& ranges, RangeSet* other);

    QItemSelection toSelection() const;

private:
    struct Entry
    {
        Block block;
        const QAbstractItemModel* model;
        /// Place in `m_ranges` for a range that is still whole, -1 for a remainder.
        int source;
        bool alive;
    };
    struct ParentKey
    {
        const QAbstractItemModel* model;
        QModelIndex parent;
        friend bool operator==(const ParentKey& a, const ParentKey& b)
        {
            return a.model == b.model && a.parent == b.parent;
        }
        friend uint qHash(const ParentKey& key, uint seed)
        {
            return qHash(key.parent) ^ qHash(key.model, seed);
        }
    };
    /// Orders entries by parent, then by size class, then by first row.
    struct Position
    {
        int parent;
        int sizeClass;
        int top;
        int entry;
        bool operator<(const Position& other) const;
    };

    int parentNumber(const QItemSelectionRange& range);
    Block blockOf(const QItemSelectionRange& range);
    void insert(Entry entry);
    void index(int entry);
    std::vector<int> hits(const Block& block);
    bool cut(const Block& block);
    void split(const Entry& entry, const Block& block);
    QItemSelectionRange toRange(const Entry& entry) const;

    QHash<ParentKey, int> m_parentNumbers;
    std::vector<QModelIndex> m_parents;
    std::vector<std::uint32_t> m_sizeClasses; // per parent, one bit for each class in use
    QItemSelection m_ranges;
    std::vector<Entry> m_entries;
    std::set<Position> m_positions;
    int m_scans = 0;
    bool m_indexed = false;
};

} // namespace kyr::selection
