#pragma once

#include <editor/viewport/gizmo/gizmo_types.h>

#include <editor/viewport/camera/orbit_camera.h>

#include <optional>

namespace editor {

/// By how much a snapping drag steps.
struct GizmoSteps
{
    float distance = 0.5f; ///< world units
    float angle = 15.0f;   ///< degrees
    float factor = 0.1f;
};

/// One drag of a handle: follows the pointer across the screen and tells what that means in the
/// world, as seen by the camera at the start. A way that means nothing, such as beyond the horizon,
/// leaves the last result.
class GizmoDrag
{
public:
    GizmoDrag(Gizmo::Tool tool, const GizmoHandle& handle, const GizmoFrame& frame,
              const OrbitCamera& camera, const QPointF& start);

    const GizmoHandle& handle() const { return m_change.handle; }
    /// With `fine`, this part of the way counts a tenth.
    void moveTo(const QPointF& position, bool fine = false);
    /// With `steps`, in whole steps of each figure.
    GizmoChange change(const std::optional<GizmoSteps>& steps) const;

private:
    std::optional<QVector3D> onPlane(const QVector3D& normal, const QPointF& position) const;
    std::optional<float> onAxis(const QPointF& position) const;
    /// Degrees around the turn's axis.
    std::optional<float> angleAt(const QPointF& position) const;
    QVector3D inFrame(const QVector3D& way) const;

    void move();
    void turn();
    void scale();

    GizmoChange m_change;
    OrbitCamera m_camera;
    QPointF m_start;
    QPointF m_last;    // where the pointer is
    QPointF m_pointer; // where it is taken to be
    std::optional<float> m_lastAngle;
};

} // namespace editor
