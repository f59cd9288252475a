#include "structure_changes.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <utility>
#include <vector>

namespace kyr::selection {
namespace {

QItemSelectionRange rows(const QItemSelectionRange& range, const QModelIndex& parent, int top,
                         int bottom)
{
    const QAbstractItemModel& model = *range.model();
    return {model.index(top, range.left(), parent), model.index(bottom, range.right(), parent)};
}

QItemSelection upTo(const QItemSelection& ranges, int end)
{
    QItemSelection first;
    first.reserve(ranges.size());
    std::copy(ranges.begin(), ranges.begin() + end, std::back_inserter(first));
    return first;
}

// Replaces the ranges for which `parts` gives any by these, at the end of the list.
template <typename Parts>
QItemSelection withParts(const QItemSelection& ranges, const Parts& parts)
{
    QItemSelection whole;
    QItemSelection pieces;
    bool isSplit = false;
    for (int i = 0; i < ranges.size(); ++i) {
        const QItemSelection cut = parts(ranges.at(i));
        if (!cut.isEmpty() && !std::exchange(isSplit, true))
            whole = upTo(ranges, i);
        if (!cut.isEmpty())
            pieces.append(cut);
        else if (isSplit)
            whole.append(ranges.at(i));
    }
    if (!isSplit)
        return ranges;
    whole.append(pieces);
    return whole;
}

} // namespace

RowsRemoval::RowsRemoval(const QModelIndex& parent, int first, int last)
    : m_parent(parent), m_first(first), m_last(last)
{}

RowsRemoval::Outcome RowsRemoval::appliedTo(const QItemSelection& ranges)
{
    Outcome outcome;
    QItemSelection pieces;
    bool isCut = false;
    for (int i = 0; i < ranges.size(); ++i) {
        const QItemSelectionRange& range = ranges.at(i);
        const QModelIndex parent = range.parent();
        const bool beside = parent == m_parent;
        const bool hit =
            beside ? range.top() <= m_last && range.bottom() >= m_first : leavesWith(parent);
        if (hit && !std::exchange(isCut, true))
            outcome.kept = upTo(ranges, i);
        if (hit && beside)
            cut(range, outcome.kept, pieces, outcome.removed);
        else if (hit)
            outcome.removed.append(range);
        else if (isCut)
            outcome.kept.append(range);
    }
    if (!isCut)
        outcome.kept = ranges;
    else
        outcome.kept.append(pieces);
    return outcome;
}

void RowsRemoval::cut(const QItemSelectionRange& range, QItemSelection& kept,
                      QItemSelection& pieces, QItemSelection& removed) const
{
    const int top = range.top();
    const int bottom = range.bottom();
    const bool above = top < m_first;
    const bool below = bottom > m_last;
    if (!above && !below) {
        removed.append(range);
        return;
    }
    removed.append(rows(range, m_parent, std::max(top, m_first), std::min(bottom, m_last)));
    QItemSelection& rest = above && below ? pieces : kept;
    if (above)
        rest.append(rows(range, m_parent, top, m_first - 1));
    if (below)
        rest.append(rows(range, m_parent, m_last + 1, bottom));
}

// Whether the children of `parent` go. Notes the answer for each ancestor on the way, so that all
// ranges together walk each branch once.
bool RowsRemoval::leavesWith(const QModelIndex& parent)
{
    if (parent == m_lastParent)
        return m_lastLeaves;
    std::vector<QModelIndex> way;
    bool leaves = false;
    for (QModelIndex at = parent; at.isValid();) {
        const QModelIndex up = at.parent();
        if (up == m_parent) {
            leaves = isAbout(at.row());
            break;
        }
        const auto known = m_leaving.constFind(at);
        if (known != m_leaving.constEnd()) {
            leaves = *known;
            break;
        }
        way.push_back(at);
        at = up;
    }
    for (const QModelIndex& ancestor : way)
        m_leaving.insert(ancestor, leaves);
    m_lastParent = parent;
    m_lastLeaves = leaves;
    return leaves;
}

QItemSelection splitAtRow(const QItemSelection& ranges, const QModelIndex& behind)
{
    const QModelIndex parent = behind.parent();
    const int row = behind.row();
    return withParts(ranges, [&](const QItemSelectionRange& range) -> QItemSelection {
        if (range.bottom() < row || range.top() >= row || range.parent() != parent)
            return {};
        QItemSelection parts;
        parts << rows(range, parent, range.top(), row - 1)
              << rows(range, parent, row, range.bottom());
        return parts;
    });
}

QItemSelection splitAtColumn(const QItemSelection& ranges, const QModelIndex& behind)
{
    const QModelIndex parent = behind.parent();
    const int column = behind.column();
    return withParts(ranges, [&](const QItemSelectionRange& range) -> QItemSelection {
        if (range.right() < column || range.left() >= column || range.parent() != parent)
            return {};
        const QAbstractItemModel& model = *range.model();
        QItemSelection parts;
        parts << QItemSelectionRange(range.topLeft(),
                                     model.index(range.bottom(), column - 1, parent))
              << QItemSelectionRange(model.index(range.top(), column, parent), range.bottomRight());
        return parts;
    });
}

} // namespace kyr::selection
