#pragma once

#include <editor/geometry/box.h>
#include <editor/geometry/convex_volume.h>
#include <editor/geometry/ray.h>

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>

namespace editor {

/// A perspective camera that circles a target, y up. All screen positions are in pixels of the
/// viewport, y down. Plain state: copy it to keep a view.
class OrbitCamera
{
public:
    QVector3D target() const { return m_target; }
    float distance() const { return m_distance; }
    float yaw() const { return m_yaw; }     ///< degrees around y
    float pitch() const { return m_pitch; } ///< degrees above the horizon
    QSizeF viewport() const { return m_viewport; }

    QVector3D eye() const { return m_target - forward() * m_distance; }
    QVector3D forward() const;
    QVector3D right() const;
    QVector3D up() const;

    void setViewport(const QSizeF& size);
    /// What the near and far planes have to enclose.
    void setSceneBounds(const Box& bounds) { m_scene = bounds; }
    /// What is looked at, from how far; numbers that are none are left out.
    void place(const QVector3D& target, float distance);
    void lookFrom(float yaw, float pitch);

    /// Drags the view around the target by a distance on the screen.
    void orbit(const QPointF& pixels);
    /// Turns the camera where it stands.
    void look(const QPointF& pixels);
    /// Moves camera and target by a way as the camera sees it: x to the right, y up, z ahead.
    void moveBy(const QVector3D& way);
    /// Drags the target's plane along with the pointer.
    void pan(const QPointF& pixels);
    /// Scales the distance; what is under `anchor` at the target's depth stays under it.
    void zoom(float factor, const QPointF& anchor);
    /// Moves so that the box fills the view, from the same direction. Ignores an empty box.
    void frame(const Box& box);

    QMatrix4x4 view() const;
    QMatrix4x4 projection() const;

    /// The depth before which nothing is drawn.
    float nearPlane() const;
    /// Nothing for a point behind the eye.
    std::optional<QPointF> project(const QVector3D& point) const;
    /// From the eye; its direction has length one along forward(), so distances are depths.
    Ray rayAt(const QPointF& position) const;
    /// All that a rectangle on the screen covers.
    ConvexVolume volumeOf(const QRectF& rectangle) const;
    /// World units that a pixel covers at depth one.
    float pixelSize() const;

private:
    float aspect() const { return float(m_viewport.width() / m_viewport.height()); }
    float farPlane() const;

    QVector3D m_target;
    float m_distance = 10.0f;
    float m_yaw = 35.0f;
    float m_pitch = 25.0f;
    QSizeF m_viewport{640, 480};
    Box m_scene;
};

} // namespace editor
