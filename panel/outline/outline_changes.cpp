// What an outline makes of changes in its scene. The list announces a change when the scene does
// and makes it when the scene has; rows of an arrangement go at once and come afterwards.

#include "outline_core.h"

#include <algorithm>

namespace kyr::panel {

namespace {

/// Changes of more rows than this are nobody's pointer.
constexpr int hoveredAtOnce = 64;

} // namespace

void OutlineModel::Core::announceInsertion(int first, int count)
{
    if (count <= 0 || m_quiet)
        return;
    m_announced = Announced::Insert;
    m_indexedRow = -1;
    q.beginInsertRows({}, first, first + count - 1);
}

void OutlineModel::Core::announceRemoval(int first, int count)
{
    if (count <= 0 || m_quiet)
        return;
    m_announced = Announced::Remove;
    m_indexedRow = -1;
    q.beginRemoveRows({}, first, first + count - 1);
}

/// To its own place nothing moves, though depths may change: the last child becomes its parent's
/// next sibling.
void OutlineModel::Core::announceMove(int first, int count, int target)
{
    if (m_quiet || (target >= first && target <= first + count))
        return;
    m_announced = Announced::Move;
    m_indexedRow = -1;
    q.beginMoveRows({}, first, first + count - 1, {}, target);
}

void OutlineModel::Core::endAnnounced()
{
    m_indexedRow = -1;
    switch (std::exchange(m_announced, Announced::Nothing)) {
    case Announced::Insert:
        q.endInsertRows();
        break;
    case Announced::Remove:
        q.endRemoveRows();
        break;
    case Announced::Move:
        q.endMoveRows();
        break;
    case Announced::Layout:
        Q_EMIT q.layoutChanged();
        break;
    case Announced::Reset:
        q.endResetModel();
        break;
    case Announced::Nothing:
        break;
    }
}

void OutlineModel::Core::beginChange()
{
    m_indexedRow = -1;
    m_current.reset();
}

void OutlineModel::Core::aboutToInsert(Node parent, int order, int count)
{
    if (!m_arranged && rows().showsChildren(parent))
        announceInsertion(rows().rowsBefore(order), count);
}

void OutlineModel::Core::inserted(Node, int order, int count)
{
    if (m_arranged)
        placeNew(order, count);
}

void OutlineModel::Core::aboutToRemove(Node, int order, int count)
{
    const RowTree& scene = m_mirror.rows();
    const auto goes = [&](Node node) {
        const int at = scene.order(node);
        return at >= order && at < order + count;
    };
    m_hovered.erase(std::remove_if(m_hovered.begin(), m_hovered.end(), goes), m_hovered.end());
    if (m_arranged) {
        takeAway(order, count);
        return;
    }
    const int first = scene.rowsBefore(order);
    announceRemoval(first, scene.rowsBefore(order + count) - first);
}

void OutlineModel::Core::removed() {}

void OutlineModel::Core::aboutToMove(Node, int order, int count, Node to, int target)
{
    m_movesDown = target > order;
    if (m_arranged)
        return;
    const int first = rows().rowsBefore(order);
    const int leaving = rows().rowsBefore(order + count) - first;
    const int row = rows().rowsBefore(target);
    if (!rows().showsChildren(to))
        announceRemoval(first, leaving);
    else if (leaving > 0)
        announceMove(first, leaving, row);
    else
        announceInsertion(row, rows().countIfShown(order, count));
}

void OutlineModel::Core::moved(Node, Node to, int order, int count)
{
    if (m_arranged) {
        placeMoved(order, count);
        return;
    }
    endAnnounced();
    if (!rows().showsChildren(to))
        return;
    const int first = rows().rowsBefore(order);
    const int last = rows().rowsBefore(order + count) - 1;
    if (first <= last)
        Q_EMIT q.dataChanged(q.index(first), q.index(last), {DepthRole});
}

void OutlineModel::Core::aboutToRelayout()
{
    if (m_arranged) {
        aboutToReset();
        return;
    }
    m_announced = Announced::Layout;
    Q_EMIT q.layoutAboutToBeChanged();
    m_savedIndexes.clear();
    for (const QModelIndex& index : q.persistentIndexList())
        m_savedIndexes.emplace_back(index, QPersistentModelIndex(indexAt(index.row())));
}

void OutlineModel::Core::relaidOut()
{
    const bool wasArranged = m_arranged != nullptr;
    m_delayedMarks.clear();
    m_hovered.clear();
    if (wasArranged)
        arrangeNow();
    readSelection();
    for (const auto& [own, index] : m_savedIndexes)
        q.changePersistentIndex(own, q.index(q.rowOf(index)));
    m_savedIndexes.clear();
}

void OutlineModel::Core::aboutToReset()
{
    m_announced = Announced::Reset;
    q.beginResetModel();
}

void OutlineModel::Core::wasReset()
{
    m_delayedMarks.clear();
    m_hovered.clear();
    readRoles();
    arrangeNow();
    readSelection();
    if (!m_mirror.model())
        Q_EMIT q.sourceModelChanged();
}

void OutlineModel::Core::endChange()
{
    m_current.reset();
    std::vector<Node> changed;
    for (const auto& [ranges, selected] : std::exchange(m_delayedMarks, {}))
        mark(ranges, selected, changed);
    endAnnounced();
    if (!changed.empty())
        signalMarks(changed);
    if (std::exchange(m_currentDelayed, false))
        allChanged({CurrentRole});
    Q_EMIT q.selectedCountChanged();
    if (m_working)
        m_slices.start();
}

void OutlineModel::Core::wishesToOpen(Node node)
{
    const Node shown = shownNode(node);
    if (shown != RowTree::none && followsScene())
        setExpanded(shown, true);
    else
        m_mirror.setExpanded(node, true);
}

void OutlineModel::Core::childrenChanged(const QModelIndex& parent)
{
    const Node shown = shownNode(m_mirror.nodeOf(parent));
    const int row = shown == RowTree::none ? -1 : rows().nearestRow(shown);
    if (row >= 0 && row < count())
        Q_EMIT q.dataChanged(q.index(row), q.index(row),
                             {HasChildrenRole, HiddenSelectedRole, HiddenHoveredRole});
}

void OutlineModel::Core::dataChanged(const QModelIndex& first, const QModelIndex& last,
                                     const QVector<int>& roles)
{
    m_indexedRow = -1;
    if (m_hoverRole >= 0 && (roles.isEmpty() || roles.contains(m_hoverRole)) &&
        last.row() - first.row() < hoveredAtOnce)
        updateHovered(first, last);
    const bool inCells = std::any_of(m_cellRoles.begin(), m_cellRoles.end(),
                                     [&](int role) { return roles.contains(role); });
    const QVector<int> changed = inCells ? QVector<int>(roles) << int(CellsRole) : roles;
    if (m_arranged) {
        placeChanged(first, last, changed);
        Q_EMIT q.selectedCountChanged();
        return;
    }
    if (m_working)
        noteChange(first, last);
    // Rows of opened children in between are told too: cheaper than a signal for each run.
    const int top = q.rowOf(first.siblingAtColumn(0));
    const int bottom = q.rowOf(last.siblingAtColumn(0));
    if (top >= 0 && bottom >= top)
        Q_EMIT q.dataChanged(q.index(top), q.index(bottom), changed);
}

} // namespace kyr::panel
