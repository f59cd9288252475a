#include "selection_edits.h"

#include <editor/document/scene_commands.h>
#include <host/undo/commit_changes_scope.h>

#include <set>
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

/// In tree order.
template <typename Predicate>
Objects objectsWhere(const SceneDocument& document, const Predicate& matches)
{
    Objects result;
    std::vector<SceneObject*> waiting{document.root().get()};
    while (!waiting.empty()) {
        SceneObject* object = waiting.back();
        waiting.pop_back();
        if (matches(*object))
            result.emplace_back(object->reflected());
        const auto& children = object->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            waiting.push_back(child->get());
    }
    return result;
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
    return objectsWhere(document, [&selection](SceneObject& object) {
        return !selection.isSelected(object.reflected());
    });
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

Objects parentsOfSelected(const SceneDocument& document, const IAssetSelection& selection)
{
    Objects result;
    std::unordered_set<const SceneObject*> seen;
    for (const SceneObjectPtr& object : selectedObjects(document, selection)) {
        if (object->parent() && seen.insert(object->parent()).second)
            result.emplace_back(object->parent()->reflected());
    }
    return result;
}

Objects sameTypeAsSelected(const SceneDocument& document, const IAssetSelection& selection)
{
    const SceneObjects selected = selectedObjects(document, selection);
    std::set<ObjectKind> kinds;
    for (const SceneObjectPtr& object : selected)
        kinds.insert(object->kind());
    const SceneObject* primary = selected.empty() ? nullptr : selected.back().get();
    Objects result = objectsWhere(document, [&](const SceneObject& object) {
        return &object != primary && kinds.count(object.kind()) != 0;
    });
    if (primary)
        result.emplace_back(selected.back()->reflected());
    return result;
}

} // namespace editor
