#include "viewport_binding.h"

#include "selection_edits.h"
#include "viewport_items.h"

#include <editor/document/scene_commands.h>
#include <editor/document/transform_math.h>

#include <algorithm>
#include <unordered_set>

namespace editor {

namespace {

struct MarkedItems
{
    std::vector<quint32> ids;
    /// How many at the end belong to the object selected last.
    std::size_t primaryCount = 0;
};

/// The objects with everything below them, each item once, at its last place. O(n).
MarkedItems withBranches(const SceneObjects& objects)
{
    MarkedItems marked;
    std::unordered_set<const SceneObject*> visited;
    for (auto object = objects.rbegin(); object != objects.rend(); ++object) {
        std::vector<const SceneObject*> waiting{object->get()};
        while (!waiting.empty()) {
            const SceneObject* next = waiting.back();
            waiting.pop_back();
            if (!visited.insert(next).second)
                continue;
            marked.ids.push_back(next->id());
            for (const SceneObjectPtr& child : next->children())
                waiting.push_back(child.get());
        }
        if (object == objects.rbegin())
            marked.primaryCount = marked.ids.size();
    }
    std::reverse(marked.ids.begin(), marked.ids.end());
    return marked;
}

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
    connect(&m_document, &SceneDocument::reset, this, [this] {
        resetItems();
        m_controller.frameAll();
    });
    connect(&m_document, &SceneDocument::structureChanged, this, &ViewportBinding::resetItems);
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
    connect(&m_controller, &ViewportController::contextMenuRequested, this, [this](quint32 id) {
        SceneObject* object = m_document.objectById(id);
        if (object && !m_selection.isSelected(object->reflected()))
            pick(id, Qt::NoModifier);
        Q_EMIT contextMenuRequested();
    });
}

void ViewportBinding::resetItems()
{
    std::vector<ViewportItem> items;
    items.reserve(std::size_t(m_document.objectCount()) + 1);
    forEachViewportItem(*m_document.root(),
                        [&items](ViewportItem item) { items.push_back(std::move(item)); });
    m_controller.setItems(std::move(items));
    showSelection();
    showHover();
}

void ViewportBinding::updateItems(const ObjectChanges& changes)
{
    const ChangeAspects shown = ChangeAspect::Visibility | ChangeAspect::Lock |
                                ChangeAspect::Transform | ChangeAspect::Material |
                                ChangeAspect::Other;
    // An update costs a search in the view's index; for many objects a new index is cheaper.
    if (changes.size() > std::size_t(m_document.objectCount()) / 4 + 100) {
        resetItems();
        return;
    }
    for (const ObjectChange& change : changes) {
        if (!(change.aspects & shown) || !m_document.contains(change.object))
            continue;
        if (change.aspects & ChangeAspect::Transform) {
            forEachViewportItem(*change.object, [this](const ViewportItem& item) {
                m_controller.updateItem(item);
            });
        } else {
            m_controller.updateItem(viewportItem(*change.object, worldTransform(*change.object)));
        }
    }
}

void ViewportBinding::showSelection()
{
    const MarkedItems marked = withBranches(selectedObjects(m_document, m_selection));
    m_controller.setSelectedIds(marked.ids, marked.primaryCount);
}

void ViewportBinding::showHover()
{
    SceneObjects objects;
    for (const kyr::PersistentObject& hovered : m_hovered) {
        SceneObject* object = sceneObjectOf(hovered.object());
        if (m_document.contains(object))
            objects.push_back(object->shared_from_this());
    }
    m_controller.setHoveredIds(withBranches(objects).ids);
}

void ViewportBinding::frame(SceneObject& object)
{
    m_controller.frame(withBranches({object.shared_from_this()}).ids);
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
