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
        /// Few ranges were hit, and none lies deep below the rows: what walks up from each range
        /// and takes hits out of the list one by one is cheap.
        bool isSmall = false;
    };

    /// Parts of ranges stay in place; of a range that is cut in two, both go to the end of the
    /// list. Few hits leave the rest of a list that is moved in untouched.
    Outcome appliedTo(QItemSelection ranges);

private:
    /// Whether the children of a parent go, and how many ancestors were asked for it.
    struct Answer
    {
        bool leaves = false;
        int steps = 0;
    };

    bool isAbout(int row) const { return row >= m_first && row <= m_last; }
    Answer leavesWith(const QModelIndex& parent);
    QItemSelection cut(const QItemSelectionRange& range, QItemSelection& pieces,
                       QItemSelection& removed) const;

    const QModelIndex m_parent;
    const int m_first;
    const int m_last;
    QHash<QModelIndex, Answer> m_answers;
    QModelIndex m_lastParent;
    Answer m_lastAnswer;
};

/// What is left of ranges that lose the cells that are still there.
QItemSelection withoutCells(const QItemSelection& ranges, const QItemSelection& cells);

/// Cuts ranges in two before the row or column of `behind`, where others are about to be inserted;
/// both parts go to the end of the list.
QItemSelection splitAtRow(const QItemSelection& ranges, const QModelIndex& behind);
QItemSelection splitAtColumn(const QItemSelection& ranges, const QModelIndex& behind);

} // namespace kyr::selection
