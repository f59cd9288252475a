#pragma once

#include <editor/viewport/gizmo/gizmo_drag.h>
#include <editor/viewport/gizmo/gizmo_entry.h>
#include <editor/viewport/gizmo/gizmo_layout.h>

#include <QPointF>

#include <optional>

namespace editor {

/// What a gizmo stands on, told by the host.
struct GizmoTarget
{
    QVector3D origin;
    std::array<QVector3D, 3> localAxes; ///< as GizmoFrame's
    bool isFixed = false;               ///< shown, but nothing may be dragged
};

/// The gizmo of a viewport: its tool, where it stands, and the drag of one of its handles. Knows
/// neither objects nor graphics. GUI thread only; a slot of any signal may call anything here.
///
/// A drag is told as `dragStarted`, any number of `dragged`, and one of `dragFinished` and
/// `dragCanceled`. The host applies each change to the places at the start.
class GizmoController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(editor::Gizmo::Tool tool READ tool WRITE setTool NOTIFY settingsChanged)
    Q_PROPERTY(editor::Gizmo::Space space READ space WRITE setSpace NOTIFY settingsChanged)
    Q_PROPERTY(editor::Gizmo::Pivot pivot READ pivot WRITE setPivot NOTIFY settingsChanged)
    Q_PROPERTY(bool snapping READ isSnapping WRITE setSnapping NOTIFY settingsChanged)
    /// The step of the present tool, in words; empty where there is none.
    Q_PROPERTY(QString step READ step NOTIFY settingsChanged)
    Q_PROPERTY(bool dragging READ isDragging NOTIFY looksChanged)
    Q_PROPERTY(QString readout READ readout NOTIFY looksChanged)
    /// Added to the readout by the host, such as what stays where it is.
    Q_PROPERTY(QString remark READ remark NOTIFY looksChanged)

public:
    /// The camera must outlive it.
    explicit GizmoController(const OrbitCamera& camera, QObject* parent = nullptr);

    Gizmo::Tool tool() const { return m_tool; }
    void setTool(Gizmo::Tool tool);
    Gizmo::Space space() const { return m_space; }
    void setSpace(Gizmo::Space space);
    Gizmo::Pivot pivot() const { return m_pivot; }
    void setPivot(Gizmo::Pivot pivot);
    bool isSnapping() const { return m_snapping; }
    void setSnapping(bool snapping);
    const GizmoSteps& steps() const { return m_steps; }
    void setSteps(const GizmoSteps& steps);
    QString step() const;
    /// Goes on to the next of the usual steps of the present tool, and from the widest to the
    /// narrowest.
    Q_INVOKABLE void nextStep();

    /// Without a target there is no gizmo. Ignored during a drag, which takes the gizmo along.
    void setTarget(const std::optional<GizmoTarget>& target);
    void setRemark(const QString& remark);
    QString remark() const { return m_remark; }

    bool isDragging() const { return m_drag.has_value(); }
    bool isFixed() const { return m_target && m_target->isFixed; }
    /// The figures of the drag; empty without one.
    QString readout() const;
    /// The handle that is dragged, or else the one under the pointer.
    GizmoHandle activeHandle() const { return m_drag ? m_drag->handle() : m_hovered; }
    /// Where the handles are at present.
    GizmoLayout layout() const;

    /// @name Input, called by ViewportController
    /// @{
    /// Whether a handle is at the position; marks it.
    bool hover(const QPointF& position);
    void leave() { setHovered({}); }
    /// Takes hold of the handle at the position, if there is one that can be dragged.
    bool press(const QPointF& position);
    /// Nothing happens before the pointer has come far enough not to be a click.
    void drag(const QPointF& position, Qt::KeyboardModifiers modifiers);
    /// Of a drag: what `GizmoEntry` takes counts in place of the pointer, Enter ends the drag.
    /// Whether the key means something.
    bool keyPress(int key);
    /// Ends the drag; false when it was a mere click.
    bool release();
    void cancel();
    /// @}

Q_SIGNALS:
    void settingsChanged();
    void looksChanged();

    /// Somebody takes hold of a gizmo that is fixed.
    void dragRefused();
    void dragStarted();
    void dragged(const editor::GizmoChange& change);
    void dragFinished();
    void dragCanceled();

private:
    void setHovered(const GizmoHandle& handle);
    GizmoFrame frame() const;
    void end();

    const OrbitCamera& m_camera;
    Gizmo::Tool m_tool = Gizmo::Tool::Move;
    Gizmo::Space m_space = Gizmo::Space::World;
    Gizmo::Pivot m_pivot = Gizmo::Pivot::Primary;
    bool m_snapping = false;
    GizmoSteps m_steps;
    std::optional<GizmoTarget> m_target;
    QString m_remark;
    GizmoHandle m_hovered;
    std::optional<GizmoDrag> m_drag;
    GizmoEntry m_entry;
    GizmoChange m_change; // of the drag
    QPointF m_pressedAt;
    bool m_hasMoved = false;
};

} // namespace editor
