#pragma once

#include <editor/document/gradual_release.h>
#include <editor/document/object_change.h>
#include <editor/document/prepared_scene.h>
#include <host/undo/changes_controller.h>

#include <QMatrix4x4>
#include <QObject>
#include <QTimer>
#include <QUuid>

#include <memory>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace editor {

using SceneObjects = std::vector<SceneObjectPtr>;

/// The open scene: its tree of objects, its file and its undo stack. Lives on the GUI thread.
///
/// Every operation is one named undo step, or part of the scope that is open. Changes of place
/// are told at once, in pairs around the change. Changes of values are gathered and told together
/// when their step is complete, done, undone or redone. Receivers must not edit in between.
class SceneDocument final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString filePath READ filePath NOTIFY filePathChanged)
    Q_PROPERTY(QString title READ title NOTIFY filePathChanged)
    Q_PROPERTY(bool modified READ isModified NOTIFY modifiedChanged)
    Q_PROPERTY(int objectCount READ objectCount NOTIFY structureChanged)

public:
    explicit SceneDocument(QObject* parent = nullptr);
    ~SceneDocument() override;

    /// Replaces the scene by a free tree and forgets all undo steps. Linear in the tree; the scene
    /// of before is let go of bit by bit.
    void open(SceneObjectPtr root, const QString& filePath);
    /// The same at once, whatever the size.
    void open(PreparedScene scene, const QString& filePath);
    /// Declares the present state to be what `filePath` holds.
    void markSaved(const QString& filePath);
    /// Declares `filePath` to be the scene's file, but not to hold any state of it there is now.
    void markUnsaved(const QString& filePath);

    const SceneObjectPtr& root() const noexcept { return m_root; }
    QString filePath() const { return m_filePath; }
    /// File name, or "Untitled".
    QString title() const;
    bool isModified() const noexcept { return m_version != m_savedVersion; }
    /// The root does not count.
    int objectCount() const noexcept { return int(m_byId.size()) - 1; }
    const std::shared_ptr<Zar::ChangesController>& changesController() const noexcept
    {
        return m_controller;
    }
    QUndoStack& undoStack() const noexcept { return m_controller->stack(); }

    /// Whether the scene shows half of a step: one that is being recorded, or one that is tried
    /// out and may be taken back.
    bool isStepOpen() const noexcept { return m_isTried || m_controller->isScopeOpen(); }
    void setTried(bool isTried) noexcept { m_isTried = isTried; }

    /// Tells this scene from any other; another one once a file is opened.
    QUuid sceneKey() const noexcept { return m_sceneKey; }
    /// Null for an id that is not in the scene, such as a removed object's. O(1).
    SceneObject* objectById(quint32 id) const noexcept;
    /// O(1).
    bool contains(const SceneObject* object) const noexcept
    {
        return object && object->document() == this;
    }

    // Operations. Objects that are not in the scene, and the root where it cannot take part, are
    // left out; what is then empty or changes nothing leaves no step. Each is linear in the
    // objects it touches and their siblings. What is locked is left out as well, and `refused`
    // tells of it: it stays where it is with all below it, and takes nothing in.

    bool rename(const SceneObjectPtr& object, const QString& name);
    /// Puts free trees before the child at `row`.
    bool insert(const SceneObjects& objects, SceneObject& parent, int row);
    bool insert(const SceneObjectPtr& object, SceneObject& parent, int row)
    {
        return insert(SceneObjects{object}, parent, row);
    }
    /// Moves the objects, in tree order, before the child at `row` (-1: behind the last). Each
    /// keeps its place in the world as far as position, rotation and scale can say it. Objects
    /// below another one that moves stay with it. False when the parent is inside one of them.
    bool reparent(const SceneObjects& objects, SceneObject& parent, int row = -1);
    /// Objects with something locked below them stay as well.
    bool remove(const SceneObjects& objects);
    /// Puts a copy of each object, with all below it, behind the original. Returns the copies.
    SceneObjects duplicate(const SceneObjects& objects);
    /// Puts the topmost ones below a new group, which stands where the first of them stood in their
    /// common parent. Each keeps its place in the world. Null when there is none to group.
    SceneObjectPtr group(const SceneObjects& objects, const std::string& name);
    /// Puts the children of groups in their place; each keeps its place in the world. Other kinds
    /// are left alone. Returns the children.
    SceneObjects ungroup(const SceneObjects& objects);

    /// Selections that have names. They are part of the scene and of its file.
    const SelectionSets& selectionSets() const noexcept { return m_root->selectionSets(); }
    /// One step of that name, unless nothing changes.
    void setSelectionSets(SelectionSets sets, const std::string& step);

    /// Sets the property at a dotted path, such as "light.intensity", on every object that has
    /// it. Returns how many took another value. Locks can be opened and closed by this alone.
    int setProperty(const SceneObjects& objects, std::string_view path, const lumo::Variant& value);

    /// While set, changes of values wait for the end of their step. Otherwise those of a long step
    /// are told from the event loop as well, so that views follow a drag.
    void setTellsOnlyWholeSteps(bool wholeSteps);

    /// Those of `objects` that are in the scene, without the root and those below another one, in
    /// tree order.
    SceneObjects topmost(const SceneObjects& objects) const;
    /// The topmost ones that `remove` takes away.
    SceneObjects removable(const SceneObjects& objects);

    /// Notes that a command left a locked object alone.
    void refuse(const SceneObject& object);
    /// Why objects were left alone since this was last told, in one sentence; empty when none was.
    /// Who takes it tells it, instead of `refused`.
    QString takeRefusal();

Q_SIGNALS:
    void filePathChanged();
    void modifiedChanged(bool modified);
    void objectsChanged(const editor::ObjectChanges& changes);
    /// Told from the event loop, once for all that was left alone until then.
    void refused(const QString& reason);
    /// Objects came, went or moved; once a step.
    void structureChanged();
    void selectionSetsChanged();

    void aboutToReset();
    void reset();
    void rowsAboutToBeInserted(editor::SceneObject* parent, int first, int last);
    void rowsInserted(editor::SceneObject* parent, int first, int last);
    void rowsAboutToBeRemoved(editor::SceneObject* parent, int first, int last);
    void rowsRemoved(editor::SceneObject* parent, int first, int last);
    /// As `QAbstractItemModel::beginMoveRows` takes them.
    void rowsAboutToBeMoved(editor::SceneObject* from, int first, int last, editor::SceneObject* to,
                            int row);
    void rowsMoved(editor::SceneObject* from, int first, int last, editor::SceneObject* to,
                   int row);
    /// The child that was at `oldRows[i]` comes to row i.
    void childrenAboutToBeReordered(editor::SceneObject* parent, const std::vector<int>& oldRows);
    void childrenReordered(editor::SceneObject* parent, const std::vector<int>& oldRows);

private:
    friend class SceneObject;
    class Change;
    class PropertyChange;
    class RowsChange;
    class MoveChange;
    class OrderChange;
    class SetsChange;

    void take(PreparedScene scene);
    void declareSaved();
    void setFilePath(const QString& filePath);
    void attach(SceneObject& branch);
    void detach(SceneObject& branch);
    /// Works out what all of the branch has from above, as far as anything changes.
    void spreadInherited(SceneObject& branch, ChangeAspects aspects);

    // Bare changes of shape, each between its two signals.
    void insertRows(SceneObject& parent, int row, SceneObjects objects);
    SceneObjects takeRows(SceneObject& parent, int row, int count);
    void moveRows(SceneObject& from, int first, int count, SceneObject& to, int row);
    void reorder(SceneObject& parent, const std::vector<int>& oldRows);
    void noteShape(SceneObject& parent);

    void gather(SceneObject& parent, const SceneObjects& children);
    void gatherScattered(const SceneObjects& objects);
    void placeInWorld(const SceneObjectPtr& object, const QMatrix4x4& world);

    bool refuses(const SceneObject& object);
    SceneObjects unlocked(SceneObjects objects);
    bool allowsChange(const SceneObject& object, const kyr::BoundProperty& property);
    void tellRefusal();

    void perform(std::unique_ptr<Change> change, Zar::StringRef name);
    void propertyChanged(SceneObject& object, const kyr::BoundProperty& property,
                         const lumo::Variant& before, const lumo::Variant& after,
                         vex::Flags<kyr::SetterFlag> flags);
    void setVersion(SceneObject& object, quint32 version);
    void noteChange(SceneObject& object, ChangeAspects aspects);
    void forgetChanges();
    void flushChanges();

    GradualRelease m_release; // steps that go with the document give it what they hold
    std::shared_ptr<Zar::ChangesController> m_controller;
    SceneObjectPtr m_root;
    std::shared_ptr<SceneMembership> m_membership;
    ObjectsById m_byId;
    std::vector<SceneObjectPtr> m_pending;
    QTimer m_flushTimer;
    QTimer m_refusalTimer;
    std::unordered_set<quint32> m_refused;
    QString m_filePath;
    QUuid m_sceneKey = QUuid::createUuid();
    quint32 m_lastId = 0;
    quint32 m_lastVersion = 0;
    quint32 m_version = 0;
    quint32 m_savedVersion = 0;
    quint32 m_saveCount = 0;
    bool m_tellsOnlyWholeSteps = false;
    bool m_setsLocks = false;
    bool m_isTried = false;
    bool m_structureChanged = false;
    bool m_announcedModified = false;
};

/// The property at a dotted path, such as "transform.position"; invalid when there is none.
kyr::BoundProperty propertyAtPath(const kyr::ReflectedObject& object, std::string_view path);

} // namespace editor
