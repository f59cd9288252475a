#include "gizmo_layout.h"

#include <QLineF>
#include <QtMath>

#include <algorithm>

namespace editor {

namespace {

using Part = GizmoHandle::Part;

// Pixels.
constexpr double middleGap = 16;
constexpr double arrowLength = 18;
constexpr double arrowWidth = 7;
constexpr double cubeSize = 5.5;
constexpr double planeFrom = 26;
constexpr double planeTo = 44;
constexpr double ringRadius = 78;
constexpr double discRadius = 8;

// Shares of a right angle's sine, below which a handle is too far turned away.
constexpr float leastAxisSine = 0.16f;
constexpr float leastPlaneCosine = 0.16f;
constexpr float facingCosine = 0.985f;

double distanceToSegment(const QPointF& point, const QPointF& from, const QPointF& to)
{
    const QPointF way = to - from;
    const double length2 = QPointF::dotProduct(way, way);
    const double along =
        length2 > 0 ? qBound(0.0, QPointF::dotProduct(point - from, way) / length2, 1.0) : 0.0;
    return QLineF(point, from + way * along).length();
}

double distanceTo(const GizmoLayout::Shape& shape, const QPointF& point)
{
    if (shape.isFilled && shape.points.containsPoint(point, Qt::OddEvenFill))
        return 0;
    double nearest = 1e9;
    for (int i = 1; i < shape.points.size(); ++i)
        nearest = std::min(nearest, distanceToSegment(point, shape.points[i - 1], shape.points[i]));
    return nearest;
}

} // namespace

std::optional<float> GizmoLayout::pixelSizeAt(const QVector3D& place, const OrbitCamera& camera)
{
    const float depth = QVector3D::dotProduct(place - camera.eye(), camera.forward());
    if (!(depth > camera.nearPlane()))
        return std::nullopt;
    return depth * camera.pixelSize();
}

GizmoLayout::GizmoLayout(Gizmo::Tool tool, const GizmoFrame& frame, const OrbitCamera& camera)
    : m_frame(frame), m_camera(camera), m_toEye((camera.eye() - frame.origin).normalized())
{
    const auto pixel = pixelSizeAt(frame.origin, camera);
    const auto centre = camera.project(frame.origin);
    if (!pixel || !centre)
        return;
    m_pixel = *pixel;
    m_centre = *centre;
    for (int axis = 0; axis < 3; ++axis) {
        if (tool == Gizmo::Tool::Move || tool == Gizmo::Tool::Scale)
            addAxis(axis, tool == Gizmo::Tool::Move);
        if (tool == Gizmo::Tool::Move)
            addPlane(axis);
        if (tool == Gizmo::Tool::Rotate)
            addRing(axis);
    }
    std::stable_sort(m_shapes.begin(), m_shapes.end(),
                     [](const Shape& a, const Shape& b) { return a.nearness < b.nearness; });
    if (tool == Gizmo::Tool::Rotate)
        addMiddle(reach, false);
    else if (tool != Gizmo::Tool::None)
        addMiddle(discRadius, true);
}

QVector3D GizmoLayout::along(int axis, double pixels) const
{
    return m_frame.axes[std::size_t(axis)] * (m_pixel * float(pixels));
}

QPointF GizmoLayout::onScreen(const QVector3D& place) const
{
    return m_camera.project(place).value_or(m_centre);
}

void GizmoLayout::add(GizmoHandle handle, const std::vector<QVector3D>& places, bool isFilled)
{
    Shape shape{handle, {}, isFilled, 0};
    QVector3D middle;
    for (const QVector3D& place : places) {
        shape.points << onScreen(place);
        middle += (place - m_frame.origin) / float(places.size());
    }
    if (isFilled)
        shape.points << shape.points.front();
    shape.nearness = QVector3D::dotProduct(middle, m_toEye);
    m_shapes.push_back(std::move(shape));
}

void GizmoLayout::addAxis(int axis, bool hasArrow)
{
    const GizmoHandle handle{Part::Axis, axis};
    const QVector3D& direction = m_frame.axes[std::size_t(axis)];
    if (QVector3D::crossProduct(direction, m_toEye).length() < leastAxisSine)
        return;
    const double length = reach - arrowLength;
    add(handle, {m_frame.origin + along(axis, middleGap), m_frame.origin + along(axis, length)},
        false);

    // The head is flat on the screen, as long as the axis leaves it.
    const QPointF base = onScreen(m_frame.origin + along(axis, length));
    const QPointF tip = onScreen(m_frame.origin + along(axis, reach));
    const QLineF line(m_centre, base);
    const QPointF forward = QPointF(line.dx(), line.dy()) / std::max(line.length(), 1e-6);
    const QPointF across(-forward.y(), forward.x());
    Shape head{handle, {}, true, m_shapes.back().nearness};
    if (hasArrow) {
        const double headLength = std::max(QLineF(base, tip).length(), arrowWidth);
        head.points << base + across * arrowWidth << base + forward * headLength
                    << base - across * arrowWidth;
    } else {
        const QPointF middle = base + forward * cubeSize;
        for (const auto& [x, y] : {std::pair(-1, -1), {1, -1}, {1, 1}, {-1, 1}})
            head.points << middle + forward * (cubeSize * x) + across * (cubeSize * y);
    }
    head.points << head.points.front();
    m_shapes.push_back(std::move(head));
}

void GizmoLayout::addPlane(int normal)
{
    if (std::abs(QVector3D::dotProduct(m_frame.axes[std::size_t(normal)], m_toEye)) <
        leastPlaneCosine)
        return;
    // In the quadrant that faces the camera.
    const auto edge = [&](int axis, double pixels) {
        const float side = QVector3D::dotProduct(m_frame.axes[std::size_t(axis)], m_toEye);
        return along(axis, side < 0 ? -pixels : pixels);
    };
    const int u = (normal + 1) % 3;
    const int v = (normal + 2) % 3;
    const QVector3D& origin = m_frame.origin;
    add({Part::Plane, normal},
        {origin + edge(u, planeFrom) + edge(v, planeFrom),
         origin + edge(u, planeTo) + edge(v, planeFrom),
         origin + edge(u, planeTo) + edge(v, planeTo),
         origin + edge(u, planeFrom) + edge(v, planeTo)},
        true);
}

void GizmoLayout::addRing(int axis)
{
    constexpr int segments = 64;
    const QVector3D u = along((axis + 1) % 3, ringRadius);
    const QVector3D v = along((axis + 2) % 3, ringRadius);
    const bool isWhole =
        std::abs(QVector3D::dotProduct(m_frame.axes[std::size_t(axis)], m_toEye)) > facingCosine;
    // The half towards the camera.
    const float middle =
        std::atan2(QVector3D::dotProduct(v, m_toEye), QVector3D::dotProduct(u, m_toEye));
    const float half = float(isWhole ? M_PI : M_PI_2);
    std::vector<QVector3D> places;
    for (int i = 0; i <= segments; ++i) {
        const float angle = middle + half * (2.0f * float(i) / segments - 1.0f);
        places.push_back(m_frame.origin + u * std::cos(angle) + v * std::sin(angle));
    }
    add({Part::Axis, axis}, places, false);
}

void GizmoLayout::addMiddle(double radius, bool isFilled)
{
    constexpr int corners = 72;
    Shape circle{{Part::View, 0}, {}, isFilled, 0};
    for (int i = 0; i <= corners; ++i) {
        const double angle = 2 * M_PI * i / corners;
        circle.points << m_centre + QPointF(std::cos(angle), std::sin(angle)) * radius;
    }
    m_shapes.push_back(std::move(circle));
}

GizmoHandle GizmoLayout::handleAt(const QPointF& position) const
{
    GizmoHandle best;
    double nearest = tolerance;
    // From the nearest shape backwards, so that it wins where two are equally near.
    for (auto shape = m_shapes.rbegin(); shape != m_shapes.rend(); ++shape) {
        const double distance = distanceTo(*shape, position);
        if (distance < nearest) {
            nearest = distance;
            best = shape->handle;
        }
    }
    return best;
}

} // namespace editor
