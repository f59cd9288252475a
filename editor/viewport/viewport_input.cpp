// What pointer and keys do to a ViewportController.

#include "viewport_controller.h"

#include <QLineF>

#include <cmath>

namespace editor {

namespace {

using Kind = PointerGesture::Kind;

constexpr double zoomPerWheelStep = 0.88;
constexpr double wheelStep = 120.0; // Qt's unit of a wheel's notch
constexpr double zoomPerPixel = 0.994;
constexpr double samePlace = 4.0; // pixels within which a click counts as one on the same place
constexpr float fastFlight = 4.0f;
constexpr float flightPerWheelStep = 1.25f;

} // namespace

void ViewportController::press(const QPointF& position, int button, int modifiers)
{
    if (m_gesture.isActive() || m_gizmo.isDragging())
        return;
    const Qt::KeyboardModifiers keys(modifiers);
    if (button == Qt::LeftButton && !(keys & Qt::AltModifier) && m_gizmo.press(position)) {
        pointAt(0);
        return;
    }
    m_gesture.press(position, Qt::MouseButton(button), keys);
}

void ViewportController::move(const QPointF& position, int modifiers)
{
    if (m_gizmo.isDragging()) {
        m_gizmo.drag(position, Qt::KeyboardModifiers(modifiers));
        return;
    }
    if (!m_gesture.isActive()) {
        movePointer(position);
        return;
    }
    const auto before = m_gesture.kind();
    const QPointF way = m_gesture.move(position);
    gestureChanged(before);
    drag(way);
}

void ViewportController::release(const QPointF& position, int button, int modifiers)
{
    if (m_gizmo.isDragging() && button == Qt::LeftButton) {
        if (m_gizmo.release())
            movePointer(position);
        else
            pick(position, Qt::KeyboardModifiers(modifiers)); // what is behind the handle
        return;
    }
    if (Qt::MouseButton(button) != m_gesture.button())
        return;
    const QRectF band = rubberBand();
    const Qt::KeyboardModifiers keys(modifiers);
    const auto kind = m_gesture.release();
    gestureChanged(kind);
    releaseKeys();
    if (kind == Kind::Click) {
        click(position, keys);
        return;
    }
    if (kind == Kind::RubberBand)
        Q_EMIT rubberBandSelected(m_items.idsWithin(m_camera, band), keys);
    if (!m_gesture.isActive())
        movePointer(position);
}

void ViewportController::click(const QPointF& position, Qt::KeyboardModifiers modifiers)
{
    if (m_gesture.button() == Qt::RightButton)
        Q_EMIT contextMenuRequested(idAt(position), position);
    else if (m_gesture.button() == Qt::LeftButton)
        pick(position, modifiers);
}

void ViewportController::pick(const QPointF& position, Qt::KeyboardModifiers modifiers)
{
    const quint32 id = modifiers ? idAt(position) : idBehind(position);
    m_lastPick = LastPick{id, position};
    Q_EMIT picked(id, modifiers);
}

bool ViewportController::isLastPick(const QPointF& position) const
{
    return m_lastPick && QLineF(m_lastPick->position, position).length() <= samePlace;
}

quint32 ViewportController::idBehind(const QPointF& position) const
{
    const bool goesOn = isLastPick(position) && m_selectedIds.size() == 1 &&
                        m_selectedIds.front() == m_lastPick->id;
    if (!goesOn)
        return idAt(position);
    const std::vector<ItemSet::Hit> hits = m_items.pickAll(m_camera, position);
    const auto last = std::find_if(hits.begin(), hits.end(), [this](const ItemSet::Hit& hit) {
        return hit.id == m_lastPick->id;
    });
    if (hits.empty())
        return 0;
    return last == hits.end() || last + 1 == hits.end() ? hits.front().id : (last + 1)->id;
}

void ViewportController::doubleClick(const QPointF& position)
{
    if (m_gizmo.isDragging())
        return;
    m_gesture.release(); // its second click picks nothing more
    const quint32 id = isLastPick(position) ? m_lastPick->id : idAt(position);
    if (id != 0)
        Q_EMIT activated(id);
}

void ViewportController::drag(const QPointF& pixels)
{
    switch (m_gesture.kind()) {
    case Kind::Orbit:
        m_camera.orbit(pixels);
        break;
    case Kind::Look:
        m_camera.look(pixels);
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
    if (before == Kind::Click && m_gesture.kind() != Kind::Click && m_gesture.isActive())
        pointAt(0); // a drag points at nothing
    if (before == Kind::RubberBand)
        Q_EMIT rubberBandChanged();
    if (before != m_gesture.kind())
        Q_EMIT cursorShapeChanged();
}

void ViewportController::wheel(const QPointF& position, qreal angleDelta)
{
    if (m_gizmo.isDragging())
        return;
    if (m_gesture.kind() == Kind::Look) {
        m_flightSpeed *= std::pow(flightPerWheelStep, float(angleDelta / wheelStep));
        m_flightSpeed = qBound(0.01f, m_flightSpeed, 100.0f);
        return;
    }
    m_camera.zoom(float(std::pow(zoomPerWheelStep, angleDelta / wheelStep)), position);
    Q_EMIT cameraChanged();
    if (!m_gesture.isActive())
        movePointer(position);
}

void ViewportController::leave()
{
    m_pointer.reset();
    m_gizmo.leave();
    pointAt(0);
}

bool ViewportController::cancel()
{
    const bool wasActive = m_gesture.isActive() || m_gizmo.isDragging();
    m_gizmo.cancel();
    gestureChanged(m_gesture.release());
    releaseKeys();
    return wasActive;
}

void ViewportController::movePointer(const QPointF& position)
{
    m_pointer = position;
    if (!m_frame.isActive())
        lookUnderPointer();
}

void ViewportController::lookUnderPointer()
{
    if (!m_pointer || m_gesture.isActive() || m_gizmo.isDragging())
        return;
    m_frame.start();
    const QPointF position = *std::exchange(m_pointer, std::nullopt);
    pointAt(m_gizmo.hover(position) ? 0 : idAt(position));
}

void ViewportController::pointAt(quint32 id)
{
    if (id == m_pointedId)
        return;
    m_pointedId = id;
    setHoveredId(id);
    Q_EMIT hovered(id);
}

bool ViewportController::flightKey(int key, bool isDown)
{
    if (!m_gesture.isActive() || m_gesture.button() != Qt::RightButton)
        return false;
    if (key == Qt::Key_Shift)
        m_fliesFast = isDown;
    else if (!(isDown ? m_flight.press(key) : m_flight.release(key)))
        return false;
    const auto before = m_gesture.kind();
    m_gesture.begin(); // what was pressed is no click any more
    gestureChanged(before);
    if (m_flight.isMoving() && !m_flightFrame.isActive()) {
        m_flightTime.start();
        m_flightFrame.start();
    }
    return true;
}

void ViewportController::fly()
{
    const float seconds = float(m_flightTime.restart()) / 1000.0f;
    if (!m_flight.isMoving()) {
        m_flightFrame.stop();
        return;
    }
    const float speed = m_flightSpeed * (m_fliesFast ? fastFlight : 1.0f);
    m_camera.moveBy(m_flight.direction() * (m_camera.distance() * speed * seconds));
    Q_EMIT cameraChanged();
}

void ViewportController::releaseKeys()
{
    m_flight.stop();
    m_fliesFast = false;
    m_flightFrame.stop();
}

} // namespace editor
