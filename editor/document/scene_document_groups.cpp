// Groups: many objects below a new one, and back.

#include "scene_document.h"

#include "sibling_names.h"
#include "step_name.h"
#include <host/undo/commit_changes_scope.h>

#include <algorithm>
#include <unordered_set>

namespace editor {

namespace {

/// The lowest object that all of `members` are below.
SceneObject& commonParent(const SceneObjects& members)
{
    SceneObject* common = members.front()->parent();
    std::unordered_set<const SceneObject*> seen;
    for (const SceneObjectPtr& member : members) {
        const SceneObject* parent = member->parent();
        if (!seen.insert(parent).second)
            continue;
        while (parent != common && !parent->isInside(*common))
            common = common->parent();
    }
    return *common;
}

int rowBelow(const SceneObject& parent, const SceneObject& object)
{
    const SceneObject* child = &object;
    while (child->parent() != &parent)
        child = child->parent();
    return child->row();
}

} // namespace

SceneObjectPtr SceneDocument::group(const SceneObjects& objects, const std::string& name)
{
    const SceneObjects members = unlocked(topmost(objects));
    if (members.empty())
        return nullptr;
    SceneObject& parent = commonParent(members);
    const Zar::CommitChangesScope scope(stepName("Group", members), m_controller.get());
    const SceneObjectPtr group =
        SceneObject::create(ObjectKind::Group, SiblingNames(parent).unique(name));
    group->setExpanded(true);
    if (!insert({group}, parent, rowBelow(parent, *members.front())))
        return nullptr;
    reparent(members, *group);
    return group;
}

SceneObjects SceneDocument::ungroup(const SceneObjects& objects)
{
    SceneObjects groups = unlocked(topmost(objects));
    groups.erase(std::remove_if(groups.begin(), groups.end(),
                                [](const SceneObjectPtr& object) {
                                    return object->kind() != ObjectKind::Group;
                                }),
                 groups.end());
    SceneObjects released;
    if (groups.empty())
        return released;
    const Zar::CommitChangesScope scope(stepName("Ungroup", groups), m_controller.get());
    for (const SceneObjectPtr& group : groups) {
        const SceneObjects children = group->children();
        SceneObject& parent = *group->parent();
        if (!children.empty())
            reparent(children, parent, group->row());
        std::copy_if(children.begin(), children.end(), std::back_inserter(released),
                     [&parent](const SceneObjectPtr& child) { return child->parent() == &parent; });
    }
    remove(groups);
    return released;
}

} // namespace editor
