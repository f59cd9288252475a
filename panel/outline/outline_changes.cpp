// What an outline makes of changes in its scene. The list announces a change when the scene does
// and makes it when the scene has; rows of an arrangement go at once and come afterwards.

#include "outline_model.h"

namespace kyr::panel {

namespace {

/// Changes of more rows than this are nobody's pointer.
constexpr int hoveredAtOnce = 64;

} // namespace

void OutlineModel::aboutToChange(const SceneChange& change)
{
    m_indexedRow = -1;
    const RowTree::Range& orders = change.orders;
    if (change.kind == SceneChange::Reset)
        return beginReset();
    if (change.kind == SceneChange::Remove && !m_hovered.empty()) {
        const auto goes = [&](Node node) {
            const int at = m_mirror.rows().order(node);
            return at >= orders.first && at < orders.end;
        };
        m_hovered.erase(std::remove_if(m_hovered.begin(), m_hovered.end(), goes), m_hovered.end());
    }
    if (m_arranged) {
        if (change.kind == SceneChange::Remove || change.kind == SceneChange::Move)
            takeAway(orders);
        return;
    }
    const bool shows = rows().showsChildren(change.to);
    const int target = rows().rowsBefore(change.target);
    if (change.kind == SceneChange::Insert) {
        announceInsertion(target, shows ? orders.count() : 0);
        return;
    }
    const RowTree::Range leaving = rows().rowsIn(orders);
    if (change.kind == SceneChange::Remove || (change.kind == SceneChange::Move && !shows))
        announceRemoval(leaving.first, leaving.count());
    else if (change.kind == SceneChange::Move && leaving.count() > 0)
        announceMove(leaving.first, leaving.count(), target);
    else if (change.kind == SceneChange::Move)
        announceInsertion(target, rows().countIfShown(orders));
}

void OutlineModel::changed(const SceneChange& change)
{
    std::vector<Node> marked;
    if (change.kind == SceneChange::Reset) {
        m_delayedMarks.clear();
        m_hovered.clear();
        m_pass.reset();
        m_arranged.reset();
        m_rules.reset();
        m_mirror.setReadsBranches(sourceModel() && m_settings.arranges());
        readRoles();
        readSelection();
        setWorking(true);
        work(QDeadlineTimer(QDeadlineTimer::Forever));
        endReset();
        if (!sourceModel())
            Q_EMIT sourceModelChanged();
    } else {
        for (const auto& [ranges, on] : std::exchange(m_delayedMarks, {}))
            mark(ranges, on, marked);
        endAnnounced();
    }
    if (m_arranged && (change.kind == SceneChange::Insert || change.kind == SceneChange::Move))
        placeNew(change.orders);
    if (!marked.empty())
        signalMarks(marked);
    if (std::exchange(m_currentDelayed, false))
        allChanged({CurrentRole});
    if (!m_arranged && change.kind == SceneChange::Move && rows().showsChildren(change.to)) {
        const RowTree::Range moved = rows().rowsIn(change.orders);
        if (moved.count() > 0)
            Q_EMIT dataChanged(index(moved.first), index(moved.end - 1), {DepthRole});
    }
    for (const Node node : change.wishing) {
        if (followsScene() && shown(node) != RowTree::none)
            open(node, true);
        else
            m_mirror.setOpen(node, m_mirror.rows().below(node), true);
    }
    for (const Node parent : {change.from, change.to})
        rowChanged(parent, {HasChildrenRole, HiddenSelectedRole, HiddenHoveredRole});
    Q_EMIT selectedCountChanged();
}

void OutlineModel::sceneDataChanged(const QModelIndex& first, const QModelIndex& last,
                                    const QVector<int>& roles)
{
    m_indexedRow = -1;
    const int count = last.row() - first.row() + 1;
    if (m_hoverRole >= 0 && (roles.isEmpty() || roles.contains(m_hoverRole)) &&
        count <= hoveredAtOnce)
        updateHovered(first, last);
    const QList<int> cells = cellRoles();
    const bool inCells =
        std::any_of(cells.begin(), cells.end(), [&](int role) { return roles.contains(role); });
    const QVector<int> changed = inCells ? QVector<int>(roles) << int(CellsRole) : roles;
    const bool places = m_arranged && !m_working && placesRows(count);
    if (m_working && count > hoveredAtOnce)
        m_outdated = true;
    for (int row = first.row(); row <= last.row() && count <= hoveredAtOnce; ++row) {
        const QModelIndex index = first.sibling(row, 0);
        if (m_working || (places && m_rules->sortsBy(changed)))
            placeLater(index);
        if (places)
            placeChanged(index, changed);
        if (m_arranged)
            rowChanged(m_mirror.nodeOf(index), changed);
    }
    if (m_arranged) {
        if (count > hoveredAtOnce)
            allChanged(changed);
        Q_EMIT selectedCountChanged();
        return;
    }
    // Rows of opened children in between are told too: cheaper than a signal for each run.
    const int top = rowOf(first);
    const int bottom = rowOf(last);
    if (top >= 0 && bottom >= top)
        Q_EMIT dataChanged(index(top), index(bottom), changed);
}

} // namespace kyr::panel
