#include "scene_document.h"

#include "object_reference.h"
#include "property_annotations.h"
#include "scene_branch.h"
#include "scene_document_changes.h"
#include "thread_release.h"

#include <QFileInfo>

#include <algorithm>

namespace editor {

namespace {

// No state has it.
constexpr quint32 neverSaved = ~0u;
constexpr std::chrono::milliseconds releaseSlice{4};

} // namespace

SceneDocument::SceneDocument(QObject* parent)
    : QObject(parent)
    , m_release(releaseSlice)
    , m_controller(std::make_shared<Zar::ChangesController>())
{
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(0);
    connect(&m_flushTimer, &QTimer::timeout, this, &SceneDocument::flushChanges);
    m_refusalTimer.setSingleShot(true);
    m_refusalTimer.setInterval(0);
    connect(&m_refusalTimer, &QTimer::timeout, this, &SceneDocument::tellRefusal);
    // The stack moves when a step is complete: recorded, undone or redone.
    connect(&undoStack(), &QUndoStack::indexChanged, this, &SceneDocument::flushChanges);
    registerObjectReferences();
    addReferenceScene(*this);
    take(PreparedScene::from(SceneObject::create(ObjectKind::Scene, "Scene")));
}

SceneDocument::~SceneDocument()
{
    removeReferenceScene(*this);
    disconnect(&undoStack(), nullptr, this, nullptr);
    undoStack().clear();
    m_membership->document = nullptr;
}

void SceneDocument::open(SceneObjectPtr root, const QString& filePath)
{
    open(PreparedScene::from(std::move(root)), filePath);
}

void SceneDocument::open(PreparedScene scene, const QString& filePath)
{
    Q_EMIT aboutToReset();
    undoStack().clear();
    forgetChanges();
    m_membership->document = nullptr;
    m_release.add(std::move(m_root));
    releaseInThread(std::exchange(m_byId, {}));
    m_sceneKey = QUuid::createUuid();
    take(std::move(scene));
    m_filePath = filePath;
    m_refused.clear();
    Q_EMIT reset();
    Q_EMIT filePathChanged();
    Q_EMIT selectionSetsChanged();
    m_structureChanged = true;
    flushChanges();
}

void SceneDocument::take(PreparedScene scene)
{
    m_root = std::move(scene.root);
    m_byId = std::move(scene.byId);
    m_lastId = scene.lastId;
    m_membership = std::move(scene.membership);
    m_membership->document = this;
    m_saveCount = SceneObject::firstSave;
    m_savedVersion = m_version;
}

void SceneDocument::markSaved(const QString& filePath)
{
    declareSaved();
    setFilePath(filePath);
    flushChanges();
}

void SceneDocument::markUnsaved(const QString& filePath)
{
    m_savedVersion = neverSaved;
    setFilePath(filePath);
    flushChanges();
}

void SceneDocument::setFilePath(const QString& filePath)
{
    if (m_filePath == filePath)
        return;
    m_filePath = filePath;
    Q_EMIT filePathChanged();
}

void SceneDocument::declareSaved()
{
    const quint32 save = m_saveCount + 1;
    for (SceneObject* object : branchOf(*m_root)) {
        if (object->isModified())
            noteChange(*object, ChangeAspect::Modified);
        object->m_savedVersion = object->m_version;
        object->m_savedIn = save;
    }
    m_saveCount = save;
    m_savedVersion = m_version;
}

QString SceneDocument::title() const
{
    return m_filePath.isEmpty() ? tr("Untitled") : QFileInfo(m_filePath).fileName();
}

SceneObject* SceneDocument::objectById(quint32 id) const noexcept
{
    const auto found = m_byId.find(id);
    return found != m_byId.end() ? found->second : nullptr;
}

void SceneDocument::attach(SceneObject& branch)
{
    const std::vector<SceneObject*> objects = branchOf(branch);
    m_byId.reserve(m_byId.size() + objects.size());
    for (SceneObject* object : objects) {
        if (object->m_id == 0 || !m_byId.emplace(object->m_id, object).second) {
            object->m_id = ++m_lastId;
            m_byId.emplace(object->m_id, object);
        }
        object->m_membership = m_membership;
        object->updateInherited();
        object->m_protected = object->m_effectivelyLocked;
    }
}

void SceneDocument::detach(SceneObject& branch)
{
    for (SceneObject* object : branchOf(branch)) {
        m_byId.erase(object->m_id);
        object->m_membership.reset();
        object->m_pendingAspects = 0;
    }
}

void SceneDocument::spreadInherited(SceneObject& branch, ChangeAspects aspects)
{
    std::vector<SceneObject*> changed;
    if (branch.updateInherited())
        changed.push_back(&branch);
    for (std::size_t i = 0; i < changed.size(); ++i) {
        noteChange(*changed[i], aspects);
        for (const SceneObjectPtr& child : changed[i]->m_children) {
            if (child->updateInherited())
                changed.push_back(child.get());
        }
    }
}

void SceneDocument::propertyChanged(SceneObject& object, const kyr::BoundProperty& property,
                                    const lumo::Variant& before, const lumo::Variant& after,
                                    vex::Flags<kyr::SetterFlag> flags)
{
    const ChangeAspects aspects = changedAspect(*property.metaProperty());
    noteChange(object, aspects);
    if (aspects & (ChangeAspect::Visibility | ChangeAspect::Lock))
        spreadInherited(object, aspects);
    if (flags.has(kyr::SetterFlag::Replay) || m_controller->isReplaying())
        return;
    auto change = std::make_unique<PropertyChange>(*this, property, before, after);
    change->stamp();
    m_controller->record(std::move(change), "Set " + property.name());
}

void SceneDocument::perform(std::unique_ptr<Change> change, Zar::StringRef name)
{
    change->redo();
    m_controller->record(std::move(change), name);
}

void SceneDocument::setVersion(SceneObject& object, quint32 version)
{
    const bool wasModified = object.isModified();
    object.m_version = version;
    if (object.isModified() != wasModified)
        noteChange(object, ChangeAspect::Modified);
}

void SceneDocument::noteChange(SceneObject& object, ChangeAspects aspects)
{
    if (object.m_pendingAspects == 0) {
        if (m_pending.empty() && !m_tellsOnlyWholeSteps)
            m_flushTimer.start();
        m_pending.push_back(object.shared_from_this());
    }
    object.m_pendingAspects |= static_cast<unsigned char>(int(aspects));
}

void SceneDocument::setTellsOnlyWholeSteps(bool wholeSteps)
{
    m_tellsOnlyWholeSteps = wholeSteps;
    if (wholeSteps)
        m_flushTimer.stop();
    else if (!m_pending.empty())
        m_flushTimer.start();
    if (!wholeSteps && !m_refused.empty())
        m_refusalTimer.start();
}

void SceneDocument::forgetChanges()
{
    for (const SceneObjectPtr& object : std::exchange(m_pending, {}))
        object->m_pendingAspects = 0;
}

void SceneDocument::flushChanges()
{
    m_flushTimer.stop();
    ObjectChanges changes;
    changes.reserve(m_pending.size());
    const SceneObjects pending = std::exchange(m_pending, {});
    for (const SceneObjectPtr& object : pending) {
        object->m_protected = object->document() && object->m_effectivelyLocked;
        if (const int aspects = std::exchange(object->m_pendingAspects, 0))
            changes.push_back({object.get(), ChangeAspects(aspects)});
    }
    if (std::exchange(m_announcedModified, isModified()) != isModified())
        Q_EMIT modifiedChanged(isModified());
    if (!changes.empty())
        Q_EMIT objectsChanged(changes);
    if (std::exchange(m_structureChanged, false))
        Q_EMIT structureChanged();
}

} // namespace editor
