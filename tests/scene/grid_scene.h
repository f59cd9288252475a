#pragma once

#include <editor/document/scene_object.h>

namespace editor {

/// A big regular scene: groups of `perGroup` small meshes each, all on a square grid, until there
/// are `objectCount` objects; the groups count, the root does not. All meshes share one geometry.
SceneObjectPtr makeGridScene(int objectCount, int perGroup);

} // namespace editor
