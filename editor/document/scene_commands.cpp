#include "scene_commands.h"

#include "step_name.h"
#include <host/undo/commit_changes_scope.h>

#include <algorithm>

namespace editor {

namespace {

// The document names what it does.
constexpr auto yieldName = Zar::CommitChangesScope::CareFlag::YieldName;

IAssetSelection::Objects referencesTo(const SceneObjects& objects)
{
    IAssetSelection::Objects references;
    references.reserve(objects.size());
    for (const SceneObjectPtr& object : objects)
        references.emplace_back(object->reflected());
    return references;
}

} // namespace

SceneObjects selectedObjects(const SceneDocument& document, const IAssetSelection& selection)
{
    SceneObjects objects;
    for (const kyr::PersistentObject& selected : selection.objects()) {
        SceneObject* object = sceneObjectOf(selected.object());
        if (document.contains(object))
            objects.push_back(object->shared_from_this());
    }
    return objects;
}

bool removeSelected(SceneDocument& document, IAssetSelection& selection)
{
    const SceneObjects selected = selectedObjects(document, selection);
    const SceneObjects doomed = document.removable(selected);
    if (doomed.empty())
        return false;
    const Zar::CommitChangesScope scope("Delete", document.changesController().get(), yieldName);
    selection.clearSelection();
    document.remove(doomed);
    SceneObjects left;
    std::copy_if(selected.begin(), selected.end(), std::back_inserter(left),
                 [&document](const SceneObjectPtr& object) {
                     return object != document.root() && document.contains(object.get());
                 });
    selection.setSelection(referencesTo(left), false);
    return true;
}

bool duplicateSelected(SceneDocument& document, IAssetSelection& selection)
{
    const Zar::CommitChangesScope scope("Duplicate", document.changesController().get(), yieldName);
    const SceneObjects copies = document.duplicate(selectedObjects(document, selection));
    if (!copies.empty())
        selection.setSelection(referencesTo(copies), false);
    return !copies.empty();
}

bool setSelectedFlag(SceneDocument& document, const IAssetSelection& selection,
                     std::string_view property, bool on, const char* verb)
{
    const SceneObjects objects = selectedObjects(document, selection);
    const Zar::CommitChangesScope scope(stepName(verb, objects),
                                        document.changesController().get());
    return document.setProperty(objects, property, lumo::Variant(on)) > 0;
}

} // namespace editor
