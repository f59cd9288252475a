#include "scene_branch.h"

namespace editor {

std::vector<SceneObject*> branchOf(SceneObject& branch)
{
    std::vector<SceneObject*> objects{&branch};
    for (std::size_t i = 0; i < objects.size(); ++i) {
        for (const SceneObjectPtr& child : objects[i]->children())
            objects.push_back(child.get());
    }
    return objects;
}

} // namespace editor
