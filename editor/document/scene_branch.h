#pragma once

#include <editor/document/scene_object.h>

namespace editor {

/// `branch` and all below it; the children of an object stand together.
std::vector<SceneObject*> branchOf(SceneObject& branch);

} // namespace editor
