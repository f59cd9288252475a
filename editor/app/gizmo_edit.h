#pragma once

#include <editor/document/scene_document.h>
#include <editor/viewport/viewport_controller.h>
#include <host/scene/asset_selection.h>

namespace editor {

/// Moves, turns and scales the selected objects as the view's gizmo is dragged: one named undo step
/// a drag, none when it is cancelled. Locked objects stay where they are, which the document tells;
/// what stands below another selected object moves with that one alone.
class GizmoEdit final : public QObject
{
    Q_OBJECT

public:
    /// All must outlive it.
    GizmoEdit(SceneDocument& document, IAssetSelection& selection, ViewportController& view,
              QObject* parent = nullptr);

private:
    struct Moved
    {
        SceneObjectPtr object;
        QMatrix4x4 parent;    ///< to the world
        QMatrix4x4 fromWorld; ///< to the parent
        TransformComponent start;
        TransformComponent now; ///< as the drag last set it
    };

    void showTarget();
    void start();
    void apply(const GizmoChange& change);
    void finish();
    void restore();
    /// The topmost selected objects that may move; the locked ones are refused.
    SceneObjects movable();

    SceneDocument& m_document;
    IAssetSelection& m_selection;
    ViewportController& m_view;
    std::vector<Moved> m_moved;
    Gizmo::Tool m_tool = Gizmo::Tool::None;
    vex::Connection m_selectionChanged;
};

/// Where a drag takes an object that stood at `start` in a parent that stands at `parent`. Scale
/// goes along the object's own axes; what a parent of uneven scale would shear comes as near as it
/// can.
TransformComponent changedTransform(const TransformComponent& start, const QMatrix4x4& parent,
                                    const QMatrix4x4& fromWorld, const GizmoChange& change);

} // namespace editor
