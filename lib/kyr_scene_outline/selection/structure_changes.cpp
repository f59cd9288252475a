#include "structure_changes.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace kyr::selection {
namespace {

// Taking so many ranges, and this part of a list, out of it one by one is cheaper than copying it.
constexpr std::size_t mostHits = 256;
constexpr std::size_t mostOfList = 4;
// How far up a range's way to the removed rows may be, on average, to be walked for each.
constexpr std::int64_t shallowSteps = 16;

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

RowsRemoval::Outcome RowsRemoval::appliedTo(QItemSelection ranges)
{
    std::vector<int> hits;
    std::int64_t steps = 0;
    for (int i = 0; i < ranges.size(); ++i) {
        const QItemSelectionRange& range = ranges.at(i);
        const QModelIndex& topLeft = range.topLeft();
        const QModelIndex parent = topLeft.parent();
        if (parent == m_parent) {
            if (topLeft.row() <= m_last && range.bottom() >= m_first)
                hits.push_back(i);
            continue;
        }
        const Answer answer = leavesWith(parent);
        steps += answer.steps;
        if (answer.leaves)
            hits.push_back(i);
    }
    Outcome outcome;
    const bool areFew = hits.size() <= std::min(mostHits, std::size_t(ranges.size()) / mostOfList);
    outcome.isSmall = areFew && steps <= shallowSteps * ranges.size();
    QItemSelection pieces;
    if (areFew) {
        // Where the list is the only one, as it is moved in, nothing is copied.
        std::vector<QItemSelection> rests;
        for (const int hit : hits)
            rests.push_back(cut(ranges.at(hit), pieces, outcome.removed));
        for (std::size_t i = hits.size(); i-- > 0;) {
            if (rests[i].isEmpty())
                ranges.removeAt(hits[i]);
            else
                ranges[hits[i]] = rests[i].constFirst();
        }
        outcome.kept = std::move(ranges);
    } else {
        outcome.kept = upTo(ranges, hits.front());
        auto hit = hits.cbegin();
        for (int i = *hit; i < ranges.size(); ++i) {
            if (hit == hits.cend() || *hit != i) {
                outcome.kept.append(ranges.at(i));
                continue;
            }
            outcome.kept.append(cut(ranges.at(i), pieces, outcome.removed));
            ++hit;
        }
    }
    outcome.kept.append(pieces);
    return outcome;
}

// What stays in the range's place, one range at most.
QItemSelection RowsRemoval::cut(const QItemSelectionRange& range, QItemSelection& pieces,
                                QItemSelection& removed) const
{
    const bool beside = range.parent() == m_parent;
    const int top = range.top();
    const int bottom = range.bottom();
    const bool above = beside && top < m_first;
    const bool below = beside && bottom > m_last;
    QItemSelection rest;
    if (!above && !below) {
        removed.append(range);
        return rest;
    }
    removed.append(rows(range, m_parent, std::max(top, m_first), std::min(bottom, m_last)));
    QItemSelection& parts = above && below ? pieces : rest;
    if (above)
        parts.append(rows(range, m_parent, top, m_first - 1));
    if (below)
        parts.append(rows(range, m_parent, m_last + 1, bottom));
    return rest;
}

// Notes the answer for each ancestor on the way, so that all ranges together walk each branch once.
RowsRemoval::Answer RowsRemoval::leavesWith(const QModelIndex& parent)
{
    if (parent == m_lastParent)
        return m_lastAnswer;
    std::vector<QModelIndex> way;
    Answer answer;
    for (QModelIndex at = parent; at.isValid();) {
        const QModelIndex up = at.parent();
        if (up == m_parent) {
            answer.leaves = isAbout(at.row());
            break;
        }
        const auto known = m_answers.constFind(at);
        if (known != m_answers.constEnd()) {
            answer = *known;
            break;
        }
        way.push_back(at);
        at = up;
    }
    for (auto ancestor = way.crbegin(); ancestor != way.crend(); ++ancestor) {
        ++answer.steps;
        m_answers.insert(*ancestor, answer);
    }
    m_lastParent = parent;
    m_lastAnswer = answer;
    return answer;
}

QItemSelection withoutCells(const QItemSelection& ranges, const QItemSelection& cells)
{
    QItemSelection kept = ranges;
    for (const QItemSelectionRange& lost : cells) {
        QItemSelection rest;
        for (const QItemSelectionRange& range : qAsConst(kept)) {
            if (range.intersects(lost))
                QItemSelection::split(range, lost, &rest);
            else
                rest.append(range);
        }
        kept = rest;
    }
    return kept;
}

QItemSelection splitAtRow(const QItemSelection& ranges, const QModelIndex& behind)
{
    const QModelIndex parent = behind.parent();
    const int row = behind.row();
    return withParts(ranges, [&](const QItemSelectionRange& range) -> QItemSelection {
        const QModelIndex& topLeft = range.topLeft();
        if (topLeft.row() >= row || range.bottom() < row || topLeft.parent() != parent)
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
