#include "gizmo_controller.h"

#include <QLineF>

#include <algorithm>

namespace editor {

namespace {

constexpr double dragThreshold = 3.0; // pixels

constexpr std::array<float, 7> distances{0.01f, 0.1f, 0.25f, 0.5f, 1.0f, 2.0f, 5.0f};
constexpr std::array<float, 6> angles{1.0f, 5.0f, 15.0f, 30.0f, 45.0f, 90.0f};
constexpr std::array<float, 4> factors{0.05f, 0.1f, 0.25f, 0.5f};

template <std::size_t size>
float following(const std::array<float, size>& values, float value)
{
    const auto next = std::upper_bound(values.begin(), values.end(), value);
    return next == values.end() ? values.front() : *next;
}

} // namespace

GizmoController::GizmoController(const OrbitCamera& camera, QObject* parent)
    : QObject(parent), m_camera(camera)
{}

void GizmoController::setTool(Gizmo::Tool tool)
{
    if (tool == m_tool)
        return;
    cancel();
    m_tool = tool;
    m_hovered = {};
    Q_EMIT settingsChanged();
    Q_EMIT looksChanged();
}

void GizmoController::setSpace(Gizmo::Space space)
{
    if (space == m_space)
        return;
    cancel();
    m_space = space;
    Q_EMIT settingsChanged();
    Q_EMIT looksChanged();
}

void GizmoController::setPivot(Gizmo::Pivot pivot)
{
    if (pivot == m_pivot)
        return;
    cancel();
    m_pivot = pivot;
    Q_EMIT settingsChanged();
}

void GizmoController::setSnapping(bool snapping)
{
    if (snapping == m_snapping)
        return;
    m_snapping = snapping;
    Q_EMIT settingsChanged();
}

void GizmoController::setSteps(const GizmoSteps& steps)
{
    m_steps = steps;
    Q_EMIT settingsChanged();
}

QString GizmoController::step() const
{
    switch (m_tool) {
    case Gizmo::Tool::Move:
        return tr("%1 m").arg(double(m_steps.distance));
    case Gizmo::Tool::Rotate:
        return tr("%1°").arg(double(m_steps.angle));
    case Gizmo::Tool::Scale:
        return tr("× %1").arg(double(m_steps.factor));
    case Gizmo::Tool::None:
        break;
    }
    return {};
}

void GizmoController::nextStep()
{
    switch (m_tool) {
    case Gizmo::Tool::Move:
        m_steps.distance = following(distances, m_steps.distance);
        break;
    case Gizmo::Tool::Rotate:
        m_steps.angle = following(angles, m_steps.angle);
        break;
    case Gizmo::Tool::Scale:
        m_steps.factor = following(factors, m_steps.factor);
        break;
    case Gizmo::Tool::None:
        return;
    }
    Q_EMIT settingsChanged();
}

void GizmoController::setTarget(const std::optional<GizmoTarget>& target)
{
    if (m_drag || (!target && !m_target))
        return;
    m_target = target;
    if (!target || target->isFixed)
        m_hovered = {};
    Q_EMIT looksChanged();
}

void GizmoController::setRemark(const QString& remark)
{
    if (remark == m_remark)
        return;
    m_remark = remark;
    Q_EMIT looksChanged();
}

GizmoFrame GizmoController::frame() const
{
    GizmoFrame frame;
    if (!m_target)
        return frame;
    frame.origin = m_target->origin;
    if (m_space == Gizmo::Space::Local || m_tool == Gizmo::Tool::Scale)
        frame.axes = m_target->localAxes;
    return frame;
}

GizmoLayout GizmoController::layout() const
{
    if (!m_target)
        return {};
    if (!m_drag)
        return GizmoLayout(m_tool, frame(), m_camera);
    GizmoFrame moved = m_change.frame;
    moved.origin += m_change.translation();
    if (m_space == Gizmo::Space::Local) {
        for (QVector3D& axis : moved.axes)
            axis = m_change.rotation().rotatedVector(axis);
    }
    return GizmoLayout(m_tool, moved, m_camera);
}

QString GizmoController::readout() const
{
    if (!m_drag)
        return {};
    return m_entry.isEmpty() ? m_change.text() : m_entry.text();
}

void GizmoController::setHovered(const GizmoHandle& handle)
{
    if (handle == m_hovered)
        return;
    m_hovered = handle;
    Q_EMIT looksChanged();
}

bool GizmoController::hover(const QPointF& position)
{
    setHovered(isFixed() ? GizmoHandle() : layout().handleAt(position));
    return bool(m_hovered);
}

bool GizmoController::press(const QPointF& position)
{
    if (isFixed() && layout().handleAt(position))
        Q_EMIT dragRefused();
    if (m_drag || !hover(position))
        return false;
    m_drag.emplace(m_tool, m_hovered, frame(), m_camera, position);
    m_change = m_drag->change(std::nullopt);
    m_entry = GizmoEntry(m_tool, m_hovered);
    m_pressedAt = position;
    m_hasMoved = false;
    Q_EMIT dragStarted();
    Q_EMIT looksChanged();
    return true;
}

void GizmoController::drag(const QPointF& position, Qt::KeyboardModifiers modifiers)
{
    m_hasMoved |= QLineF(m_pressedAt, position).length() > dragThreshold;
    if (!m_drag || !m_hasMoved || !m_entry.isEmpty())
        return;
    m_drag->moveTo(position, modifiers & Qt::ShiftModifier);
    const bool steps = m_snapping != bool(modifiers & Qt::ControlModifier);
    m_change = m_drag->change(steps ? std::optional(m_steps) : std::nullopt);
    Q_EMIT dragged(m_change);
    Q_EMIT looksChanged();
}

bool GizmoController::keyPress(int key)
{
    if (!m_drag)
        return false;
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        release();
        return true;
    }
    if (!m_entry.press(key))
        return false;
    m_hasMoved = true;
    m_change = m_drag->change(std::nullopt);
    if (!m_entry.isEmpty())
        m_entry.applyTo(m_change);
    Q_EMIT dragged(m_change);
    Q_EMIT looksChanged();
    return true;
}

bool GizmoController::release()
{
    if (!m_drag)
        return false;
    // Until the host sets another target, the gizmo stays where the drag left it.
    if (m_target)
        m_target->origin += m_change.translation();
    end();
    Q_EMIT dragFinished();
    return m_hasMoved;
}

void GizmoController::cancel()
{
    if (!m_drag)
        return;
    end();
    Q_EMIT dragCanceled();
}

void GizmoController::end()
{
    m_drag.reset();
    m_remark.clear();
    Q_EMIT looksChanged();
}

} // namespace editor
