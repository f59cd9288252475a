#include "viewport_controller.h"

#include <cmath>

namespace editor {

namespace {

constexpr double zoomPerWheelStep = 0.88;
constexpr double wheelStep = 120.0; // Qt's unit of a wheel's notch
constexpr double zoomPerPixel = 0.994;
constexpr int frameInterval = 16; // milliseconds

} // namespace

ViewportController::ViewportController(QObject* parent) : QObject(parent)
{
    m_frame.setSingleShot(true);
    m_frame.setInterval(frameInterval);
    connect(&m_frame, &QTimer::timeout, this, &ViewportController::lookUnderPointer);
}

void ViewportController::setItems(std::vector<ViewportItem> items)
{
    m_items.assign(std::move(items));
    m_triangleCount = 0;
    m_meshCount = 0;
    for (const ViewportItem& item : m_items.items()) {
        if (!item.isMesh())
            continue;
        m_triangleCount += double(item.geometry->triangleCount());
        ++m_meshCount;
    }
    m_camera.setSceneBounds(m_items.bounds());
    m_selectedIds.clear();
    m_hoveredIds.clear();
    m_pointedId = 0;
    Q_EMIT itemsReset();
    Q_EMIT selectionChanged();
    Q_EMIT hoverChanged();
    Q_EMIT cameraChanged();
}

void ViewportController::updateItem(const ViewportItem& item)
{
    if (const auto index = m_items.update(item)) {
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
}

void ViewportController::lookFrom(qreal yaw, qreal pitch)
{
    m_camera.lookFrom(float(yaw), float(pitch));
    Q_EMIT cameraChanged();
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
    switch (m_gesture.kind()) {
    case PointerGesture::Kind::RubberBand:
        return Qt::CrossCursor;
    case PointerGesture::Kind::Orbit:
        return Qt::ClosedHandCursor;
    case PointerGesture::Kind::Pan:
        return Qt::SizeAllCursor;
    case PointerGesture::Kind::Zoom:
        return Qt::SizeVerCursor;
    case PointerGesture::Kind::None:
    case PointerGesture::Kind::Click:
        break;
    }
    return Qt::ArrowCursor;
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

void ViewportController::press(const QPointF& position, int button, int modifiers)
{
    if (m_gesture.isActive())
        return;
    m_gesture.press(position, Qt::MouseButton(button), Qt::KeyboardModifiers(modifiers));
}

void ViewportController::move(const QPointF& position)
{
    if (!m_gesture.isActive()) {
        movePointer(position);
        return;
    }
    const auto before = m_gesture.kind();
    const QPointF way = m_gesture.move(position);
    if (before == PointerGesture::Kind::Click && m_gesture.kind() != before)
        pointAt(0); // a drag points at nothing
    gestureChanged(before);
    drag(way);
}

void ViewportController::release(const QPointF& position, int button, int modifiers)
{
    if (Qt::MouseButton(button) != m_gesture.button())
        return;
    const QRectF band = rubberBand();
    const Qt::KeyboardModifiers keys(modifiers);
    const auto kind = m_gesture.release();
    gestureChanged(kind);
    if (kind == PointerGesture::Kind::Click) {
        click(position, keys);
        return;
    }
    if (kind == PointerGesture::Kind::RubberBand)
        Q_EMIT rubberBandSelected(m_items.idsWithin(m_camera, band), keys);
    if (!m_gesture.isActive())
        movePointer(position);
}

void ViewportController::click(const QPointF& position, Qt::KeyboardModifiers modifiers)
{
    if (m_gesture.button() == Qt::LeftButton)
        Q_EMIT picked(idAt(position), modifiers);
    else if (m_gesture.button() == Qt::RightButton)
        Q_EMIT contextMenuRequested(idAt(position), position);
}

void ViewportController::drag(const QPointF& pixels)
{
    using Kind = PointerGesture::Kind;
    switch (m_gesture.kind()) {
    case Kind::Orbit:
        m_camera.orbit(pixels);
        break;
    case Kind::Pan:
        m_camera.pan(pixels);
        break;
    case Kind::Zoom:
        m_camera.zoom(float(std::pow(zoomPerPixel, pixels.x() - pixels.y())), m_gesture.start());
        break;
    case Kind::RubberBand:
        Q_EMIT rubberBandChanged();
        return;
    case Kind::None:
    case Kind::Click:
        return;
    }
    Q_EMIT cameraChanged();
}

void ViewportController::gestureChanged(PointerGesture::Kind before)
{
    if (before == PointerGesture::Kind::RubberBand)
        Q_EMIT rubberBandChanged();
    if (before != m_gesture.kind())
        Q_EMIT cursorShapeChanged();
}

void ViewportController::doubleClick(const QPointF& position)
{
    if (const quint32 id = idAt(position))
        Q_EMIT activated(id);
}

void ViewportController::wheel(const QPointF& position, qreal angleDelta)
{
    m_camera.zoom(float(std::pow(zoomPerWheelStep, angleDelta / wheelStep)), position);
    Q_EMIT cameraChanged();
    if (!m_gesture.isActive())
        movePointer(position);
}

void ViewportController::leave()
{
    m_pointer.reset();
    pointAt(0);
}

void ViewportController::cancel()
{
    gestureChanged(m_gesture.release());
}

void ViewportController::movePointer(const QPointF& position)
{
    m_pointer = position;
    if (!m_frame.isActive())
        lookUnderPointer();
}

void ViewportController::lookUnderPointer()
{
    if (!m_pointer || m_gesture.isActive())
        return;
    m_frame.start();
    pointAt(idAt(*std::exchange(m_pointer, std::nullopt)));
}

void ViewportController::pointAt(quint32 id)
{
    if (id == m_pointedId)
        return;
    m_pointedId = id;
    setHoveredId(id);
    Q_EMIT hovered(id);
}

} // namespace editor
