#include "selection_edits.h"

#include <editor/document/scene_commands.h>
#include <host/undo/commit_changes_scope.h>

#include <unordered_set>

namespace editor {

namespace {

using Objects = IAssetSelection::Objects;
using ObjectSet = std::unordered_set<kyr::PersistentObject>;

void appendUnlessIn(Objects& objects, const Objects& candidates, const ObjectSet& excluded)
{
    for (const kyr::PersistentObject& object : candidates) {
        if (excluded.count(object) == 0)
            objects.push_back(object);
    }
}

} // namespace

void setAssetSelection(IAssetSelection& selection, Objects objects)
{
    const auto controller = selection.changesController().lock();
    const Zar::CommitChangesScope step("Set asset selection", controller.get());
    selection.setSelection(std::move(objects), false);
}

Objects added(const Objects& present, const Objects& objects)
{
    Objects result;
    appendUnlessIn(result, present, ObjectSet(objects.begin(), objects.end()));
    result.insert(result.end(), objects.begin(), objects.end());
    return result;
}

Objects toggled(const Objects& present, const Objects& objects)
{
    Objects result;
    appendUnlessIn(result, present, ObjectSet(objects.begin(), objects.end()));
    appendUnlessIn(result, objects, ObjectSet(present.begin(), present.end()));
    return result;
}

Objects inverted(const SceneDocument& document, const IAssetSelection& selection)
{
    Objects result;
    std::vector<SceneObject*> waiting{document.root().get()};
    while (!waiting.empty()) {
        SceneObject* object = waiting.back();
        waiting.pop_back();
        const kyr::ReflectedObject handle = object->reflected();
        if (!selection.isSelected(handle))
            result.emplace_back(handle);
        const auto& children = object->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            waiting.push_back(child->get());
    }
    return result;
}

Objects childrenOfSelected(const SceneDocument& document, const IAssetSelection& selection)
{
    Objects result;
    for (const SceneObjectPtr& object : selectedObjects(document, selection)) {
        for (const SceneObjectPtr& child : object->children())
            result.emplace_back(child->reflected());
    }
    return result;
}

} // namespace editor
