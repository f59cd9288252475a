#include "prepared_scene.h"

#include "scene_branch.h"

#include <algorithm>

namespace editor {

PreparedScene PreparedScene::from(SceneObjectPtr root)
{
    PreparedScene scene{std::move(root), std::make_shared<SceneMembership>(), {}};
    const std::vector<SceneObject*> objects = branchOf(*scene.root);
    scene.byId.reserve(objects.size());
    for (const SceneObject* object : objects)
        scene.lastId = std::max(scene.lastId, object->m_id);
    for (SceneObject* object : objects) {
        if (object->m_id == 0 || !scene.byId.emplace(object->m_id, object).second) {
            object->m_id = ++scene.lastId;
            scene.byId.emplace(object->m_id, object);
        }
        object->m_membership = scene.membership;
        object->updateInherited();
        object->m_protected = object->m_effectivelyLocked;
        object->m_savedVersion = object->m_version;
        object->m_savedIn = SceneObject::firstSave;
    }
    return scene;
}

} // namespace editor
