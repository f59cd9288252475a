#include "viewport_controller.h"

#include <editor/viewport/items/frame_reach.h>

#include <algorithm>

namespace editor {

namespace {

constexpr int frameInterval = 16; // milliseconds

} // namespace

ViewportController::ViewportController(QObject* parent) : QObject(parent)
{
    m_frame.setSingleShot(true);
    m_frame.setInterval(frameInterval);
    connect(&m_frame, &QTimer::timeout, this, &ViewportController::lookUnderPointer);
    m_flightFrame.setInterval(frameInterval);
    connect(&m_flightFrame, &QTimer::timeout, this, &ViewportController::fly);
    connect(&m_gizmo, &GizmoController::looksChanged, this,
            &ViewportController::cursorShapeChanged);
}

void ViewportController::setItems(std::vector<ViewportItem> items)
{
    PreparedItems prepared;
    prepared.set.assign(std::move(items));
    exchangeItems(std::move(prepared));
}

ItemSet ViewportController::exchangeItems(PreparedItems items)
{
    ItemSet before = std::exchange(m_items, std::move(items.set));
    m_drawList = std::move(items.drawList);
    m_triangleCount = 0;
    m_meshCount = 0;
    for (const ViewportItem& item : m_items.items())
        count(item, 1);
    m_camera.setSceneBounds(m_items.bounds());
    m_selectedIds.clear();
    m_hoveredIds.clear();
    m_pointedId = 0;
    Q_EMIT itemsReset();
    Q_EMIT itemCountChanged();
    Q_EMIT selectionChanged();
    Q_EMIT hoverChanged();
    Q_EMIT cameraChanged();
    return before;
}

void ViewportController::count(const ViewportItem& item, int sign)
{
    if (!item.isMesh())
        return;
    m_triangleCount += sign * double(item.geometry->triangleCount());
    m_meshCount += sign;
}

bool ViewportController::insertItems(const std::vector<ViewportItem>& branch,
                                     const ItemSet::Gap& gap)
{
    const auto indices = m_items.insert(branch, gap);
    if (!indices)
        return false;
    m_drawList.reset();
    for (const ViewportItem& item : branch)
        count(item, 1);
    m_camera.setSceneBounds(m_items.bounds());
    Q_EMIT itemsInserted(*indices);
    Q_EMIT itemCountChanged();
    return true;
}

void ViewportController::removeItems(quint32 id)
{
    m_items.visitRange(m_items.branchOf(id),
                       [this](quint32 index) { count(m_items.items()[index], -1); });
    const std::vector<quint32> indices = m_items.remove(id);
    if (indices.empty())
        return;
    m_drawList.reset();
    if (!m_items.find(m_pointedId))
        m_pointedId = 0;
    m_camera.setSceneBounds(m_items.bounds());
    Q_EMIT itemsRemoved(indices);
    Q_EMIT itemCountChanged();
    setSelectedIds(m_selectedIds);
    setHoveredIds(m_hoveredIds);
}

void ViewportController::updateItem(const ViewportItem& item)
{
    if (const auto index = m_items.update(item)) {
        m_drawList.reset();
        m_camera.setSceneBounds(m_items.bounds());
        Q_EMIT itemChanged(*index);
    }
}

std::vector<quint32> ViewportController::known(const std::vector<quint32>& ids) const
{
    std::vector<quint32> result;
    result.reserve(ids.size());
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(result),
                 [this](quint32 id) { return m_items.find(id) != nullptr; });
    return result;
}

void ViewportController::setSelectedIds(const std::vector<quint32>& ids)
{
    std::vector<quint32> selected = known(ids);
    if (selected == m_selectedIds)
        return;
    m_selectedIds = std::move(selected);
    Q_EMIT selectionChanged();
}

void ViewportController::setHoveredIds(const std::vector<quint32>& ids)
{
    std::vector<quint32> hoveredIds = known(ids);
    if (hoveredIds == m_hoveredIds)
        return;
    m_hoveredIds = std::move(hoveredIds);
    Q_EMIT hoverChanged();
}

void ViewportController::frame(const std::vector<quint32>& ids)
{
    m_camera.frame(m_items.boundsOf(ids));
    Q_EMIT cameraChanged();
    int left = 0;
    for (const ItemRange& branch : m_items.branchesOf(ids)) {
        m_items.visitRange(branch, [&](quint32 index) {
            left += isInFrameReach(m_items.items()[index].bounds()) ? 0 : 1;
        });
    }
    if (left > 0)
        Q_EMIT notFramed(left);
}

void ViewportController::frameSelected()
{
    if (m_selectedIds.empty())
        frameAll();
    else
        frame(m_selectedIds);
}

void ViewportController::frameAll()
{
    m_camera.frame(m_items.visibleBounds());
    Q_EMIT cameraChanged();
    if (const int left = m_items.countOutOfFrameReach())
        Q_EMIT notFramed(left);
}

void ViewportController::lookFrom(qreal yaw, qreal pitch)
{
    m_camera.lookFrom(float(yaw), float(pitch));
    Q_EMIT cameraChanged();
}

void ViewportController::lookAs(const QVector3D& target, float distance, qreal yaw, qreal pitch)
{
    m_camera.place(target, distance);
    lookFrom(yaw, pitch);
}

void ViewportController::setViewportSize(const QSizeF& size)
{
    if (size == m_camera.viewport())
        return;
    m_camera.setViewport(size);
    Q_EMIT cameraChanged();
}

QRectF ViewportController::rubberBand() const
{
    const bool active = m_gesture.kind() == PointerGesture::Kind::RubberBand;
    return active ? m_gesture.rectangle() : QRectF();
}

Qt::CursorShape ViewportController::cursorShape() const
{
    if (m_gizmo.isDragging())
        return Qt::ClosedHandCursor;
    switch (m_gesture.kind()) {
    case PointerGesture::Kind::RubberBand:
        return Qt::CrossCursor;
    case PointerGesture::Kind::Orbit:
    case PointerGesture::Kind::Look:
        return Qt::ClosedHandCursor;
    case PointerGesture::Kind::Pan:
        return Qt::SizeAllCursor;
    case PointerGesture::Kind::Zoom:
        return Qt::SizeVerCursor;
    case PointerGesture::Kind::None:
    case PointerGesture::Kind::Click:
        break;
    }
    return m_gizmo.activeHandle() ? Qt::PointingHandCursor : Qt::ArrowCursor;
}

QPointF ViewportController::projectToScreen(quint32 id) const
{
    const ViewportItem* item = m_items.find(id);
    const auto position = item ? m_camera.project(item->bounds().centre()) : std::nullopt;
    return position.value_or(QPointF(qQNaN(), qQNaN()));
}

quint32 ViewportController::idAt(const QPointF& position) const
{
    const auto hit = m_items.pick(m_camera, position);
    return hit ? hit->id : 0;
}

} // namespace editor
