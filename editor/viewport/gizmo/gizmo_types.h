#pragma once

#include <QObject>
#include <QQuaternion>
#include <QVector3D>

#include <array>
#include <vector>

namespace editor {

/// What a gizmo can do and how; `Gizmo` in QML.
struct Gizmo
{
    Q_GADGET

public:
    enum class Tool
    {
        None,
        Move,
        Rotate,
        Scale
    };
    Q_ENUM(Tool)

    /// Along which axes it moves and turns. Scaling always goes along those of the object.
    enum class Space
    {
        World,
        Local
    };
    Q_ENUM(Space)

    /// What several objects turn and scale about: the place of the primary one, or the middle of
    /// all.
    enum class Pivot
    {
        Primary,
        Centre
    };
    Q_ENUM(Pivot)
};

/// What of a gizmo the pointer has hold of.
struct GizmoHandle
{
    enum class Part
    {
        None,
        Axis,
        Plane, ///< of two axes
        View   ///< the plane of the screen, or all axes alike
    };

    Part part = Part::None;
    int axis = 0; ///< 0 to 2; of a plane, the one it does not hold

    explicit operator bool() const { return part != Part::None; }
    bool operator==(const GizmoHandle& other) const
    {
        return part == other.part && axis == other.axis;
    }
    bool operator!=(const GizmoHandle& other) const { return !(*this == other); }
};

/// The axes that a handle acts along when it moves or scales.
std::vector<int> axesOf(const GizmoHandle& handle);
/// "X", "Y" or "Z".
QString axisName(int axis);
/// Behind the figures of a tool; empty for a factor.
QString unitOf(Gizmo::Tool tool);

/// Where a gizmo stands in the world.
struct GizmoFrame
{
    QVector3D origin;
    /// Of length one, at right angles, right-handed.
    std::array<QVector3D, 3> axes{QVector3D(1, 0, 0), QVector3D(0, 1, 0), QVector3D(0, 0, 1)};
};

/// What a drag has come to: how to get from the places at its start to those of now.
struct GizmoChange
{
    Gizmo::Tool tool = Gizmo::Tool::None;
    GizmoHandle handle;
    /// As the drag found it; rotation and scale are about its origin.
    GizmoFrame frame;
    /// Along the frame's axes, in world units.
    QVector3D offset;
    /// Degrees about `turnAxis`, counter-clockwise as seen from its tip; also beyond 360.
    float angle = 0;
    QVector3D turnAxis;
    /// Along the frame's axes.
    QVector3D factors{1, 1, 1};

    QVector3D translation() const
    {
        return frame.axes[0] * offset.x() + frame.axes[1] * offset.y() + frame.axes[2] * offset.z();
    }
    QQuaternion rotation() const { return QQuaternion::fromAxisAndAngle(turnAxis, angle); }
    /// Where a point in the world goes.
    QVector3D map(const QVector3D& point) const
    {
        const QVector3D arm = point - frame.origin;
        QVector3D scaled;
        for (int i = 0; i < 3; ++i) {
            const QVector3D& axis = frame.axes[std::size_t(i)];
            scaled += axis * (factors[i] * QVector3D::dotProduct(arm, axis));
        }
        return frame.origin + translation() + rotation().rotatedVector(scaled);
    }
    /// The figures to show beside the pointer.
    QString text() const;
};

} // namespace editor
