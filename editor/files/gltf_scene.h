#pragma once

#include <memory>

struct aiScene;

namespace editor {

class SceneObject;

/// The scene as the exporters take it: a node an object, a mesh for each pair of geometry and
/// material. Objects that carry a mesh and children keep both in one node.
std::unique_ptr<aiScene> makeExportScene(const SceneObject& root);

} // namespace editor
