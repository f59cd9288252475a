#pragma once

#include <editor/viewport/gizmo/gizmo_types.h>

#include <editor/viewport/camera/orbit_camera.h>

#include <QPolygonF>

#include <optional>
#include <vector>

namespace editor {

/// A gizmo as a camera shows it, in pixels of the viewport. It keeps its size on the screen. What
/// cannot be dragged from where the camera stands, such as an axis that points at it, is left out.
class GizmoLayout
{
public:
    struct Shape
    {
        GizmoHandle handle;
        QPolygonF points;
        bool isFilled;  ///< a closed area, as opposed to a line
        float nearness; ///< grows towards the camera
    };

    /// Pixels from the middle to the farthest end of a handle.
    static constexpr double reach = 96.0;
    /// Pixels by which the pointer may miss a line.
    static constexpr double tolerance = 7.0;

    GizmoLayout() = default;
    GizmoLayout(Gizmo::Tool tool, const GizmoFrame& frame, const OrbitCamera& camera);

    /// Nothing is shown without a tool or behind the camera.
    bool isEmpty() const { return m_shapes.empty(); }
    QPointF centre() const { return m_centre; }
    /// Farthest first, as they are to be painted.
    const std::vector<Shape>& shapes() const { return m_shapes; }
    GizmoHandle handleAt(const QPointF& position) const;

    /// World units that a pixel covers at a place; nothing behind the camera.
    static std::optional<float> pixelSizeAt(const QVector3D& place, const OrbitCamera& camera);

private:
    void addAxis(int axis, bool hasArrow);
    void addPlane(int normal);
    void addRing(int axis);
    void addMiddle(double radius, bool isFilled);
    void add(GizmoHandle handle, const std::vector<QVector3D>& places, bool isFilled);
    QVector3D along(int axis, double pixels) const;
    QPointF onScreen(const QVector3D& place) const;

    GizmoFrame m_frame;
    OrbitCamera m_camera;
    QVector3D m_toEye; // of length one
    float m_pixel = 1; // world units
    QPointF m_centre;
    std::vector<Shape> m_shapes;
};

} // namespace editor
