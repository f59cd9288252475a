#pragma once

#include <QHash>
#include <QItemSelection>
#include <QModelIndex>

namespace kyr::selection {

/// What the announced removal of rows takes out of lists of ranges, with all that lies below those
/// rows. Costs O(n) in the ranges, at any depth of their parents.
class RowsRemoval
{
public:
    RowsRemoval(const QModelIndex& parent, int first, int last);

    struct Outcome
    {
        QItemSelection kept;
        QItemSelection removed;
    };

    /// Parts of ranges stay in place; of a range that is cut in two, both go to the end of the
    /// list.
    Outcome appliedTo(const QItemSelection& ranges);

private:
    bool isAbout(int row) const { return row >= m_first && row <= m_last; }
    bool leavesWith(const QModelIndex& parent);
    void cut(const QItemSelectionRange& range, QItemSelection& kept, QItemSelection& pieces,
             QItemSelection& removed) const;

    const QModelIndex m_parent;
    const int m_first;
    const int m_last;
    QHash<QModelIndex, bool> m_leaving;
    QModelIndex m_lastParent;
    bool m_lastLeaves = false;
};

/// Cuts ranges in two before the row or column of `behind`, where others are about to be inserted;
/// both parts go to the end of the list.
QItemSelection splitAtRow(const QItemSelection& ranges, const QModelIndex& behind);
QItemSelection splitAtColumn(const QItemSelection& ranges, const QModelIndex& behind);

} // namespace kyr::selection
