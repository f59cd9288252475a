#include "viewport_binding.h"

#include "report.h"
#include "selection_edits.h"
#include "viewport_items.h"

#include <editor/document/scene_commands.h>
#include <editor/document/thread_release.h>
#include <editor/document/transform_math.h>

namespace editor {

namespace {

// In one step, beyond which building all items anew costs less.
constexpr int mostRowChanges = 200;

} // namespace

ViewportBinding::ViewportBinding(SceneDocument& document, IAssetSelection& selection,
                                 QObject* parent)
    : QObject(parent), m_document(document), m_selection(selection)
{
    followDocument();
    followSelection();
    followView();
    resetItems();
}

void ViewportBinding::followDocument()
{
    // Another scene is announced by both signals; a step that ends in between shows the old one.
    connect(&m_document, &SceneDocument::aboutToReset, this, [this] { m_needsReset = true; });
    connect(&m_document, &SceneDocument::reset, this, [this] {
        m_isNewScene = true;
        m_needsReset = true;
        m_isolation.end();
        Q_EMIT isolatedChanged();
    });
    using Object = SceneObject;
    connect(&m_document, &SceneDocument::rowsInserted, this,
            [this](Object* parent, int first, int last) { insertRows(*parent, first, last); });
    connect(&m_document, &SceneDocument::rowsAboutToBeRemoved, this,
            [this](Object* parent, int first, int last) { removeRows(*parent, first, last); });
    connect(&m_document, &SceneDocument::rowsAboutToBeMoved, this,
            [this](Object* from, int first, int last) { removeRows(*from, first, last); });
    connect(&m_document, &SceneDocument::rowsMoved, this,
            [this](Object* from, int first, int last, Object* to, int row) {
                const int count = last - first + 1;
                const int start = from == to && row > first ? row - count : row;
                insertRows(*to, start, start + count - 1);
            });
    connect(&m_document, &SceneDocument::childrenReordered, this, [this] { m_needsReset = true; });
    connect(&m_document, &SceneDocument::structureChanged, this, &ViewportBinding::finishStructure);
    connect(&m_document, &SceneDocument::objectsChanged, this, &ViewportBinding::updateItems);
}

void ViewportBinding::followSelection()
{
    m_selectionChanged =
        m_selection.connectSelectionChanged([this](auto&&, auto&&) { showSelection(); });
    m_hoverChanged = m_selection.connectHoverChanged(
        [this](const IAssetSelection::Objects& entered, const IAssetSelection::Objects& left) {
            for (const kyr::PersistentObject& object : left)
                m_hovered.erase(std::remove(m_hovered.begin(), m_hovered.end(), object),
                                m_hovered.end());
            m_hovered.insert(m_hovered.end(), entered.begin(), entered.end());
            showHover();
        });
}

void ViewportBinding::followView()
{
    connect(&m_controller, &ViewportController::picked, this, &ViewportBinding::pick);
    connect(&m_controller, &ViewportController::rubberBandSelected, this,
            &ViewportBinding::selectIds);
    connect(&m_controller, &ViewportController::hovered, this,
            [this](quint32 id) { m_selection.setHoveredObjects(objectsOf({id})); });
    connect(&m_controller, &ViewportController::activated, this, [this](quint32 id) {
        if (SceneObject* object = m_document.objectById(id))
            frame(*object);
    });
    connect(&m_controller, &ViewportController::notFramed, this, [this](int count) {
        const QString text =
            count == 1 ? tr("An object lies or reaches too far out to be framed")
                       : tr("%1 objects lie or reach too far out to be framed").arg(count);
        reportWarning(text);
        Q_EMIT reported(text);
    });
    connect(&m_controller, &ViewportController::contextMenuRequested, this, [this](quint32 id) {
        SceneObject* object = m_document.objectById(id);
        if (object && !m_selection.isSelected(object->reflected()))
            pick(id, Qt::NoModifier);
        Q_EMIT contextMenuRequested();
    });
}

void ViewportBinding::insertRows(const SceneObject& parent, int first, int last)
{
    // What is shown alone is worked out from the whole scene.
    m_needsReset = m_needsReset || m_isolation.isActive() || ++m_rowChanges > mostRowChanges ||
                   last - first >= mostRowChanges;
    const auto& children = parent.children();
    const std::size_t behind = std::size_t(last) + 1;
    const quint32 before = behind < children.size() ? children[behind]->id() : 0;
    for (int row = first; row <= last && !m_needsReset; ++row) {
        const std::size_t most = m_controller.items().count() / 8 + 64;
        const std::vector<ViewportItem> items = viewportItems(*children[std::size_t(row)], most);
        m_needsReset = items.empty() || !m_controller.insertItems(items, {parent.id(), before});
    }
}

void ViewportBinding::removeRows(const SceneObject& parent, int first, int last)
{
    m_needsReset =
        m_needsReset || ++m_rowChanges > mostRowChanges || last - first >= mostRowChanges;
    for (int row = first; row <= last && !m_needsReset; ++row)
        m_controller.removeItems(parent.children()[std::size_t(row)]->id());
}

void ViewportBinding::finishStructure()
{
    m_rowChanges = 0;
    if (m_needsReset) {
        resetItems();
    } else {
        showSelection();
        showHover();
    }
    if (std::exchange(m_isNewScene, false))
        frameAll();
}

void ViewportBinding::resetItems()
{
    m_needsReset = false;
    if (m_prepared && m_isNewScene) {
        releaseInThread(m_controller.exchangeItems(*std::exchange(m_prepared, {})));
        showSelection();
        showHover();
        return;
    }
    std::vector<ViewportItem> items = viewportItems(*m_document.root());
    m_isolation.update(m_document);
    for (ViewportItem& item : items)
        m_isolation.apply(item);
    m_controller.setItems(std::move(items));
    showSelection();
    showHover();
}

void ViewportBinding::updateItems(const ObjectChanges& changes)
{
    const ChangeAspects shown = ChangeAspect::Visibility | ChangeAspect::Lock |
                                ChangeAspect::Transform | ChangeAspect::Material |
                                ChangeAspect::Other;
    if (m_needsReset)
        return;
    // An update costs a search in the view's index; for many objects a new index is cheaper.
    std::size_t affected = 0;
    for (const ObjectChange& change : changes) {
        const bool movesBranch = change.aspects & ChangeAspect::Transform;
        affected +=
            movesBranch
                ? m_controller.items().countIn(m_controller.items().branchOf(change.object->id()))
                : 1;
    }
    if (affected > std::size_t(m_document.objectCount()) / 4 + 100) {
        resetItems();
        return;
    }
    for (const ObjectChange& change : changes) {
        if (!(change.aspects & shown) || !m_document.contains(change.object))
            continue;
        if (change.aspects & ChangeAspect::Transform) {
            for (ViewportItem& item : viewportItems(*change.object))
                updateItem(item);
        } else {
            ViewportItem item = viewportItem(*change.object, worldTransform(*change.object));
            updateItem(item);
        }
    }
}

void ViewportBinding::updateItem(ViewportItem& item)
{
    m_isolation.apply(item);
    m_controller.updateItem(item);
}

void ViewportBinding::toggleIsolation()
{
    if (m_isolation.isActive())
        m_isolation.end();
    else
        m_isolation.start(selectedObjects(m_document, m_selection));
    resetItems();
    Q_EMIT isolatedChanged();
}

void ViewportBinding::showSelection()
{
    m_controller.setSelectedIds(idsOf(m_selection.objects()));
}

void ViewportBinding::showHover()
{
    m_controller.setHoveredIds(idsOf(m_hovered));
}

std::vector<quint32> ViewportBinding::idsOf(const IAssetSelection::Objects& objects) const
{
    std::vector<quint32> ids;
    ids.reserve(objects.size());
    for (const kyr::PersistentObject& reference : objects) {
        const SceneObject* object = sceneObjectOf(reference.object());
        if (m_document.contains(object))
            ids.push_back(object->id());
    }
    return ids;
}

void ViewportBinding::frame(SceneObject& object)
{
    m_controller.frame({object.id()});
}

void ViewportBinding::frameSelection()
{
    m_controller.frameSelected();
}

void ViewportBinding::frameAll()
{
    m_controller.frameAll();
}

void ViewportBinding::pick(quint32 id, Qt::KeyboardModifiers modifiers)
{
    if (id == 0 && modifiers & (Qt::ControlModifier | Qt::ShiftModifier))
        return;
    selectIds(id ? std::vector<quint32>{id} : std::vector<quint32>(), modifiers);
}

void ViewportBinding::selectIds(const std::vector<quint32>& ids, Qt::KeyboardModifiers modifiers)
{
    const IAssetSelection::Objects objects = objectsOf(ids);
    if (modifiers & Qt::ControlModifier)
        setAssetSelection(m_selection, toggled(m_selection.objects(), objects));
    else if (modifiers & Qt::ShiftModifier)
        setAssetSelection(m_selection, added(m_selection.objects(), objects));
    else
        setAssetSelection(m_selection, objects);
}

IAssetSelection::Objects ViewportBinding::objectsOf(const std::vector<quint32>& ids) const
{
    IAssetSelection::Objects objects;
    for (const quint32 id : ids) {
        if (SceneObject* object = m_document.objectById(id))
            objects.emplace_back(object->reflected());
    }
    return objects;
}

} // namespace editor
