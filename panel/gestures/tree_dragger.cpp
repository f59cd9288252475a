#include "tree_dragger.h"

#include "edit_scope.h"
#include "selected_rows.h"

#include <algorithm>
#include <vector>

namespace kyr::panel {

namespace {

/// The upper and the lower part of a row mean between rows, the rest means the row itself.
constexpr qreal betweenPart = 0.28;

/// From top to bottom, in whatever order they were selected.
QModelIndexList inSceneOrder(const OutlineModel& outline, const std::vector<QModelIndex>& rows)
{
    std::vector<std::pair<int, QModelIndex>> places;
    for (const QModelIndex& row : rows)
        places.emplace_back(outline.sceneOrder(row), row);
    std::sort(places.begin(), places.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    QModelIndexList ordered;
    for (const auto& place : places)
        ordered.append(place.second);
    return ordered;
}

} // namespace

bool TreeDragger::begin(int row)
{
    cancel();
    const QModelIndex pressed = m_outline ? m_outline->sourceIndex(row) : QModelIndex();
    if (!pressed.isValid())
        return false;
    std::vector<QModelIndex> rows{pressed};
    if (m_outline->isRowSelected(row))
        rows = selectedRows<QModelIndex>(*m_outline);
    const auto stays = [](const QModelIndex& index) {
        return (index.flags() & Qt::ItemIsDragEnabled) == 0;
    };
    rows.erase(std::remove_if(rows.begin(), rows.end(), stays), rows.end());
    if (rows.empty())
        return false;
    const QModelIndexList dragged = inSceneOrder(*m_outline, rows);
    m_data.reset(m_outline->sourceModel()->mimeData(dragged));
    if (!m_data)
        return false;
    m_count = dragged.size();
    m_name = dragged.first().data().toString();
    Q_EMIT activeChanged();
    return true;
}

TreeDragger::Target TreeDragger::targetAt(int row, Place place) const
{
    const QModelIndex index = m_outline->sourceIndex(row);
    if (row < 0)
        return {QModelIndex(), m_outline->sourceModel()->rowCount()};
    if (place == On)
        return {index, -1};
    if (place == Below && m_outline->isRowExpanded(row) && m_outline->rowHasChildren(row))
        return {index, 0};
    return {index.parent(), index.row() + (place == Below ? 1 : 0)};
}

bool TreeDragger::allows(const Target& target) const
{
    if (!m_outline->showsHierarchy() || (m_outline->sortRole() >= 0 && target.row >= 0))
        return false;
    return m_outline->sourceModel()->canDropMimeData(m_data.get(), Qt::MoveAction, target.row, 0,
                                                     target.parent);
}

bool TreeDragger::tries(int row, Place place)
{
    m_allowed = allows(targetAt(row, place));
    m_place = place;
    return m_allowed;
}

void TreeDragger::moveTo(int row, qreal fraction)
{
    if (!isActive() || !m_outline || !m_outline->sourceModel())
        return;
    const Place nearest = fraction < 0.5 ? Above : Below;
    const bool between = fraction < betweenPart || fraction > 1 - betweenPart;
    m_targetRow = row;
    // A place that takes nothing leaves room to its neighbour.
    if (row < 0)
        tries(row, Below);
    else if (!tries(row, between ? nearest : On))
        tries(row, between ? On : nearest);
    Q_EMIT dropPlaceChanged();
}

bool TreeDragger::drop()
{
    bool dropped = false;
    if (isActive() && m_allowed && m_outline && m_outline->sourceModel()) {
        const Target target = targetAt(m_targetRow, m_place);
        const EditScope scope(*this, tr("Move"));
        dropped = m_outline->sourceModel()->dropMimeData(m_data.get(), Qt::MoveAction, target.row,
                                                         0, target.parent);
    }
    cancel();
    return dropped;
}

void TreeDragger::cancel()
{
    if (!isActive())
        return;
    m_data.reset();
    m_allowed = false;
    m_targetRow = -1;
    Q_EMIT dropPlaceChanged();
    Q_EMIT activeChanged();
}

} // namespace kyr::panel
