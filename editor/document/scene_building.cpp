#include "scene_building.h"

#include "scene_commands.h"
#include "sibling_names.h"
#include "step_name.h"
#include "transform_math.h"
#include <host/undo/commit_changes_scope.h>

#include <algorithm>

namespace editor {

namespace {

using Scope = Zar::CommitChangesScope;

struct Place
{
    SceneObject& parent;
    int row;
};

Place endOf(SceneObject& parent)
{
    return {parent, int(parent.children().size())};
}

Place behindPrimary(const SceneDocument& document, const IAssetSelection& selection)
{
    const SceneObjects selected = selectedObjects(document, selection);
    SceneObject* primary = selected.empty() ? nullptr : selected.back().get();
    if (!primary || !primary->parent())
        return endOf(*document.root());
    return {*primary->parent(), primary->row() + 1};
}

Place placeToAdd(const SceneDocument& document, const IAssetSelection& selection)
{
    const SceneObjects selected = selectedObjects(document, selection);
    if (!selected.empty() && selected.back()->kind() == ObjectKind::Group)
        return endOf(*selected.back());
    return behindPrimary(document, selection);
}

void select(IAssetSelection& selection, const SceneObjects& objects)
{
    IAssetSelection::Objects references;
    references.reserve(objects.size());
    for (const SceneObjectPtr& object : objects)
        references.emplace_back(object->reflected());
    selection.setSelection(std::move(references), false);
}

void placeBelow(const QMatrix4x4& parentWorld, SceneObject& object, const QMatrix4x4& world)
{
    bool isInvertible = false;
    const QMatrix4x4 toParent = parentWorld.inverted(&isInvertible);
    if (isInvertible)
        setFromMatrix(*object.transform(), toParent * world);
}

} // namespace

bool addObject(SceneDocument& document, IAssetSelection& selection, const SceneObjectPtr& object,
               const QMatrix4x4& world)
{
    const Place place = placeToAdd(document, selection);
    object->setName(SiblingNames(place.parent).unique(object->name()));
    placeBelow(worldTransform(place.parent), *object, world);
    const Scope scope(stepName("Add", {object}), document.changesController().get());
    if (!document.insert(object, place.parent, place.row))
        return false;
    select(selection, {object});
    return true;
}

bool groupSelected(SceneDocument& document, IAssetSelection& selection, const std::string& name)
{
    const Scope scope("Group", document.changesController().get(), Scope::CareFlag::YieldName);
    const SceneObjectPtr group = document.group(selectedObjects(document, selection), name);
    if (group)
        select(selection, {group});
    return group != nullptr;
}

bool ungroupSelected(SceneDocument& document, IAssetSelection& selection)
{
    const Scope scope("Ungroup", document.changesController().get(), Scope::CareFlag::YieldName);
    const SceneObjects released = document.ungroup(selectedObjects(document, selection));
    if (!released.empty())
        select(selection, released);
    return !released.empty();
}

bool pasteObjects(SceneDocument& document, IAssetSelection& selection,
                  const std::vector<CopiedObjects>& copied)
{
    const Place place = behindPrimary(document, selection);
    const QMatrix4x4 base = worldTransform(place.parent);
    SiblingNames names(place.parent);
    SceneObjects pasted;
    for (const CopiedObjects& family : copied) {
        for (const SceneObjectPtr& object : family.objects) {
            object->setName(names.unique(object->name()));
            // Below the same place it keeps its values to the last bit.
            if (family.parentWorld != base)
                placeBelow(base, *object, family.parentWorld * matrixOf(*object->transform()));
            pasted.push_back(object);
        }
    }
    if (pasted.empty())
        return false;
    const Scope scope(stepName("Paste", pasted), document.changesController().get());
    if (!document.insert(pasted, place.parent, place.row))
        return false;
    select(selection, pasted);
    return true;
}

bool saveSelectionSet(SceneDocument& document, const IAssetSelection& selection,
                      const std::string& name)
{
    SelectionSet set{name, {}};
    for (const SceneObjectPtr& object : selectedObjects(document, selection))
        set.ids.push_back(object->id());
    if (name.empty() || set.ids.empty())
        return false;
    SelectionSets sets = document.selectionSets();
    const auto same = std::find_if(sets.begin(), sets.end(), [&name](const SelectionSet& other) {
        return other.name == name;
    });
    if (same != sets.end())
        *same = std::move(set);
    else
        sets.push_back(std::move(set));
    document.setSelectionSets(std::move(sets), "Save Set " + name);
    return true;
}

bool recallSelectionSet(const SceneDocument& document, IAssetSelection& selection,
                        std::size_t index)
{
    const SelectionSets& sets = document.selectionSets();
    if (index >= sets.size())
        return false;
    SceneObjects objects;
    for (const quint32 id : sets[index].ids) {
        if (SceneObject* object = document.objectById(id))
            objects.push_back(object->shared_from_this());
    }
    const Scope scope("Select " + sets[index].name, document.changesController().get());
    select(selection, objects);
    return !objects.empty();
}

bool removeSelectionSet(SceneDocument& document, std::size_t index)
{
    SelectionSets sets = document.selectionSets();
    if (index >= sets.size())
        return false;
    const std::string name = sets[index].name;
    sets.erase(sets.begin() + static_cast<SelectionSets::difference_type>(index));
    document.setSelectionSets(std::move(sets), "Remove Set " + name);
    return true;
}

} // namespace editor
