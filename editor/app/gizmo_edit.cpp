#include "gizmo_edit.h"

#include <editor/document/scene_commands.h>
#include <editor/document/transform_math.h>
#include <host/undo/commit_changes_scope.h>

#include <algorithm>

namespace editor {

namespace {

QVector3D vectorOf(const lumo::Vector3& v)
{
    return {v.x, v.y, v.z};
}

lumo::Vector3 valueOf(const QVector3D& v)
{
    return {v.x(), v.y(), v.z()};
}

bool isSame(const TransformComponent& a, const TransformComponent& b)
{
    return a.position == b.position && a.rotation == b.rotation && a.scale == b.scale;
}

/// At right angles and of length one, as near to the object's own as that goes.
std::array<QVector3D, 3> axesOf(const QMatrix4x4& world)
{
    QVector3D x = world.column(0).toVector3D().normalized();
    if (x.isNull())
        x = QVector3D(1, 0, 0);
    QVector3D z = QVector3D::crossProduct(x, world.column(1).toVector3D()).normalized();
    if (z.isNull())
        z = QVector3D::crossProduct(x, std::abs(x.y()) < 0.9f ? QVector3D(0, 1, 0)
                                                              : QVector3D(0, 0, 1))
                .normalized();
    return {x, QVector3D::crossProduct(z, x), z};
}

void setTransform(const SceneObjectPtr& object, const TransformComponent& value,
                  vex::Flags<kyr::SetterFlag> flags)
{
    const auto set = [&](std::string_view path, const lumo::Vector3& vector) {
        propertyAtPath(object->reflected(), path).set(lumo::Variant(vector), flags);
    };
    set("transform.position", value.position);
    set("transform.rotation", value.rotation);
    set("transform.scale", value.scale);
}

const char* verbOf(Gizmo::Tool tool)
{
    switch (tool) {
    case Gizmo::Tool::Rotate:
        return "Rotate ";
    case Gizmo::Tool::Scale:
        return "Scale ";
    default:
        return "Move ";
    }
}

} // namespace

TransformComponent changedTransform(const TransformComponent& start, const QMatrix4x4& parent,
                                    const QMatrix4x4& fromWorld, const GizmoChange& change)
{
    TransformComponent result = start;
    const QVector3D place = parent.map(vectorOf(start.position));
    const bool isMove = change.tool == Gizmo::Tool::Move;
    const QVector3D target = isMove ? place + change.translation() : change.map(place);
    if (target != place)
        result.position = valueOf(fromWorld.map(target));
    if (change.tool == Gizmo::Tool::Rotate && change.angle != 0.0f) {
        // Scale stays out of it, so that a mirrored object keeps its signs.
        TransformComponent turned = start;
        turned.scale = {1, 1, 1};
        QMatrix4x4 turn;
        turn.rotate(change.rotation());
        setFromMatrix(turned, fromWorld * turn * parent * matrixOf(turned));
        result.rotation = nearestRotation(turned.rotation, start.rotation);
    }
    if (change.tool == Gizmo::Tool::Scale)
        result.scale = valueOf(vectorOf(start.scale) * change.factors);
    return result;
}

GizmoEdit::GizmoEdit(SceneDocument& document, IAssetSelection& selection, ViewportController& view,
                     QObject* parent)
    : QObject(parent), m_document(document), m_selection(selection), m_view(view)
{
    GizmoController* gizmo = view.gizmo();
    connect(gizmo, &GizmoController::dragRefused, this, &GizmoEdit::movable);
    connect(gizmo, &GizmoController::dragStarted, this, &GizmoEdit::start);
    connect(gizmo, &GizmoController::dragged, this, &GizmoEdit::apply);
    connect(gizmo, &GizmoController::dragFinished, this, &GizmoEdit::finish);
    connect(gizmo, &GizmoController::dragCanceled, this, &GizmoEdit::restore);
    connect(gizmo, &GizmoController::settingsChanged, this, &GizmoEdit::showTarget);

    // Undo and other edits end a drag rather than mix with it.
    connect(&document.undoStack(), &QUndoStack::indexChanged, gizmo, &GizmoController::cancel);
    connect(&document, &SceneDocument::aboutToReset, gizmo, &GizmoController::cancel);
    // The view's items are up to date by then, as its binding follows the document before.
    connect(&view, &ViewportController::itemsReset, this, &GizmoEdit::showTarget);
    connect(&document, &SceneDocument::structureChanged, this, &GizmoEdit::showTarget);
    connect(&document, &SceneDocument::objectsChanged, this, &GizmoEdit::showTarget);
    m_selectionChanged = selection.connectSelectionChanged([this](auto&&, auto&&) {
        m_view.gizmo()->cancel();
        showTarget();
    });
    showTarget();
}

SceneObjects GizmoEdit::movable()
{
    SceneObjects result;
    for (const SceneObjectPtr& object :
         m_document.topmost(selectedObjects(m_document, m_selection))) {
        if (object->isEffectivelyLocked())
            m_document.refuse(*object);
        else if (object->transform())
            result.push_back(object);
    }
    return result;
}

void GizmoEdit::showTarget()
{
    GizmoController& gizmo = *m_view.gizmo();
    if (gizmo.isDragging())
        return;
    if (gizmo.tool() == Gizmo::Tool::None) {
        gizmo.setTarget(std::nullopt);
        return;
    }
    const SceneObjects selected = selectedObjects(m_document, m_selection);
    const SceneObject* primary = nullptr;
    for (const SceneObjectPtr& object : selected) {
        if (object->transform())
            primary = object.get();
    }
    if (!primary) {
        gizmo.setTarget(std::nullopt);
        return;
    }
    const QMatrix4x4 world = worldTransform(*primary);
    GizmoTarget target{world.column(3).toVector3D(), axesOf(world), false};
    if (gizmo.pivot() == Gizmo::Pivot::Centre) {
        std::vector<quint32> ids;
        for (const SceneObjectPtr& object : selected)
            ids.push_back(object->id());
        const Box box = m_view.items().boundsOf(ids);
        target.origin = box.isEmpty() ? target.origin : box.centre();
    }
    // Whether one can move is found out in the end, for all at a time.
    target.isFixed =
        std::all_of(selected.begin(), selected.end(), [](const SceneObjectPtr& object) {
            return object->isEffectivelyLocked() || !object->transform();
        });
    gizmo.setTarget(target);
}

void GizmoEdit::start()
{
    m_moved.clear();
    m_document.setTried(true);
    m_tool = m_view.gizmo()->tool();
    int stuck = 0;
    for (const SceneObjectPtr& object : movable()) {
        const QMatrix4x4 parent = worldTransform(*object->parent());
        bool invertible = false;
        const QMatrix4x4 fromWorld = parent.inverted(&invertible);
        if (!invertible) {
            ++stuck;
            continue;
        }
        m_moved.push_back({object, parent, fromWorld, *object->transform(), *object->transform()});
    }
    QStringList remarks;
    if (m_moved.size() > 1)
        remarks << tr("%1 objects").arg(m_moved.size());
    if (stuck > 0)
        remarks << tr("%1 in a parent scaled to nothing").arg(stuck);
    m_view.gizmo()->setRemark(remarks.join(QStringLiteral("  ·  ")));
}

void GizmoEdit::apply(const GizmoChange& change)
{
    for (Moved& moved : m_moved) {
        const TransformComponent next =
            changedTransform(moved.start, moved.parent, moved.fromWorld, change);
        if (isSame(next, moved.now))
            continue;
        moved.now = next;
        // Recorded once, when the drag is over.
        setTransform(moved.object, next, kyr::SetterFlag::Replay);
    }
}

void GizmoEdit::restore()
{
    for (const Moved& moved : std::exchange(m_moved, {})) {
        // What somebody else set meanwhile, undo above all, stays.
        if (moved.object->transform() && isSame(*moved.object->transform(), moved.now))
            setTransform(moved.object, moved.start, kyr::SetterFlag::Replay);
    }
    m_document.setTried(false);
    showTarget();
}

void GizmoEdit::finish()
{
    const std::vector<Moved> moved = std::exchange(m_moved, {});
    if (!moved.empty()) {
        const std::string name =
            verbOf(m_tool) + (moved.size() == 1 ? moved.front().object->name()
                                                : std::to_string(moved.size()) + " objects");
        const Zar::CommitChangesScope step(name, m_document.changesController().get());
        for (const Moved& each : moved) {
            setTransform(each.object, each.start, kyr::SetterFlag::Replay);
            setTransform(each.object, each.now, {});
        }
    }
    m_document.setTried(false);
    showTarget();
}

} // namespace editor
