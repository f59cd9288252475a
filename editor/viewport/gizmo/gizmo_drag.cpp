#include "gizmo_drag.h"

#include "gizmo_layout.h"

#include <QtMath>

namespace editor {

namespace {

using Part = GizmoHandle::Part;

constexpr double fineShare = 0.1;
constexpr float leastFactor = 0.01f;
// Below it a ring is seen from its side, and the pointer drags along its edge.
constexpr float leastRingCosine = 0.25f;
// Pixels that double the size when all axes are scaled, and that turn by one radian.
constexpr double pixelsPerDoubling = 100.0;
constexpr double pixelsPerRadian = 78.0;
// Distances beyond this many times that of the gizmo are at the horizon.
constexpr float horizon = 200.0f;

float stepped(float value, float step)
{
    return std::round(value / step) * step;
}

} // namespace

GizmoDrag::GizmoDrag(Gizmo::Tool tool, const GizmoHandle& handle, const GizmoFrame& frame,
                     const OrbitCamera& camera, const QPointF& start)
    : m_camera(camera), m_start(start), m_last(start), m_pointer(start)
{
    m_change.tool = tool;
    m_change.handle = handle;
    m_change.frame = frame;
    m_change.turnAxis =
        handle.part == Part::Axis ? frame.axes[std::size_t(handle.axis)] : -camera.forward();
    m_lastAngle = angleAt(start);
}

void GizmoDrag::moveTo(const QPointF& position, bool fine)
{
    m_pointer += (position - m_last) * (fine ? fineShare : 1.0);
    m_last = position;
    switch (m_change.tool) {
    case Gizmo::Tool::Move:
        move();
        break;
    case Gizmo::Tool::Rotate:
        turn();
        break;
    case Gizmo::Tool::Scale:
        scale();
        break;
    case Gizmo::Tool::None:
        break;
    }
}

GizmoChange GizmoDrag::change(const std::optional<GizmoSteps>& steps) const
{
    GizmoChange change = m_change;
    if (!steps)
        return change;
    for (int axis = 0; axis < 3; ++axis) {
        change.offset[axis] = stepped(change.offset[axis], steps->distance);
        if (change.factors[axis] != 1.0f)
            change.factors[axis] =
                std::max(stepped(change.factors[axis], steps->factor), steps->factor);
    }
    change.angle = stepped(change.angle, steps->angle);
    return change;
}

std::optional<QVector3D> GizmoDrag::onPlane(const QVector3D& normal, const QPointF& position) const
{
    const Ray ray = m_camera.rayAt(position);
    const float across = QVector3D::dotProduct(ray.direction, normal);
    const float depth = QVector3D::dotProduct(m_change.frame.origin - ray.origin, normal) / across;
    const float gizmoDepth =
        QVector3D::dotProduct(m_change.frame.origin - ray.origin, m_camera.forward());
    if (!(depth > 0.0f && depth < gizmoDepth * horizon))
        return std::nullopt;
    return ray.at(depth);
}

// Where on the dragged axis the pointer's ray comes nearest to it, from the origin.
std::optional<float> GizmoDrag::onAxis(const QPointF& position) const
{
    const QVector3D& axis = m_change.frame.axes[std::size_t(m_change.handle.axis)];
    const Ray ray = m_camera.rayAt(position);
    const QVector3D toOrigin = ray.origin - m_change.frame.origin;
    const float length2 = ray.direction.lengthSquared();
    const float along = QVector3D::dotProduct(axis, ray.direction);
    const float axisPart = QVector3D::dotProduct(axis, toOrigin);
    const float rayPart = QVector3D::dotProduct(ray.direction, toOrigin);
    const float denominator = length2 - along * along;
    const float depth = (along * axisPart - rayPart) / denominator;
    const float gizmoDepth = -QVector3D::dotProduct(toOrigin, m_camera.forward());
    if (!(depth > 0.0f && depth < gizmoDepth * horizon))
        return std::nullopt;
    return (length2 * axisPart - along * rayPart) / denominator;
}

std::optional<float> GizmoDrag::angleAt(const QPointF& position) const
{
    const GizmoFrame& frame = m_change.frame;
    const QPointF centre = m_camera.project(frame.origin).value_or(m_start);
    if (m_change.handle.part == Part::View) {
        const QPointF arm = position - centre;
        return float(qRadiansToDegrees(std::atan2(-arm.y(), arm.x())));
    }
    const QVector3D& axis = m_change.turnAxis;
    const QVector3D toEye = (m_camera.eye() - frame.origin).normalized();
    if (std::abs(QVector3D::dotProduct(axis, toEye)) < leastRingCosine) {
        // Along the edge as it passes nearest to the camera.
        const float pixel = GizmoLayout::pixelSizeAt(frame.origin, m_camera).value_or(1.0f);
        const QVector3D tangent = QVector3D::crossProduct(axis, toEye).normalized();
        const QPointF ahead =
            m_camera.project(frame.origin + tangent * pixel * float(pixelsPerRadian))
                .value_or(centre) -
            centre;
        const double length2 = std::max(QPointF::dotProduct(ahead, ahead), 1e-6);
        const double radians = QPointF::dotProduct(position - m_start, ahead) / length2;
        return float(qRadiansToDegrees(radians));
    }
    const auto place = onPlane(axis, position);
    if (!place)
        return std::nullopt;
    const std::size_t u = std::size_t(m_change.handle.axis + 1) % 3;
    const std::size_t v = std::size_t(m_change.handle.axis + 2) % 3;
    const QVector3D arm = *place - frame.origin;
    return qRadiansToDegrees(std::atan2(QVector3D::dotProduct(arm, frame.axes[v]),
                                        QVector3D::dotProduct(arm, frame.axes[u])));
}

QVector3D GizmoDrag::inFrame(const QVector3D& way) const
{
    const auto& axes = m_change.frame.axes;
    return {QVector3D::dotProduct(way, axes[0]), QVector3D::dotProduct(way, axes[1]),
            QVector3D::dotProduct(way, axes[2])};
}

void GizmoDrag::move()
{
    const GizmoHandle& handle = m_change.handle;
    if (handle.part == Part::Axis) {
        const auto from = onAxis(m_start);
        const auto to = onAxis(m_pointer);
        if (from && to)
            m_change.offset[handle.axis] = *to - *from;
        return;
    }
    const QVector3D normal = handle.part == Part::Plane
                                 ? m_change.frame.axes[std::size_t(handle.axis)]
                                 : m_camera.forward();
    const auto from = onPlane(normal, m_start);
    const auto to = onPlane(normal, m_pointer);
    if (!from || !to)
        return;
    m_change.offset = inFrame(*to - *from);
    if (handle.part == Part::Plane)
        m_change.offset[handle.axis] = 0;
}

void GizmoDrag::turn()
{
    const auto angle = angleAt(m_pointer);
    if (angle && m_lastAngle)
        m_change.angle += std::remainder(*angle - *m_lastAngle, 360.0f); // turns go on past 180
    if (angle)
        m_lastAngle = angle;
}

void GizmoDrag::scale()
{
    const GizmoHandle& handle = m_change.handle;
    if (handle.part == Part::View) {
        const QPointF way = m_pointer - m_start;
        const double doublings = (way.x() - way.y()) / pixelsPerDoubling;
        const float factor = std::max(float(std::pow(2.0, doublings)), leastFactor);
        m_change.factors = {factor, factor, factor};
        return;
    }
    const auto from = onAxis(m_start);
    const auto to = onAxis(m_pointer);
    const auto pixel = GizmoLayout::pixelSizeAt(m_change.frame.origin, m_camera);
    if (!from || !to || !pixel)
        return;
    const float arm = *pixel * float(GizmoLayout::reach);
    m_change.factors[handle.axis] = std::max(1.0f + (*to - *from) / arm, leastFactor);
}

} // namespace editor
