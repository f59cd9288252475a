#pragma once

#include <editor/document/scene_object.h>
#include <editor/files/assimp_values.h>

struct aiScene;

namespace editor {

/// A free tree of what the imported scene holds. Every node becomes an object: one with a single
/// mesh, or with a light or camera of its name, is that itself; further meshes become children.
/// A root node that does nothing but hold the others is the scene.
SceneObjectPtr buildScene(const aiScene& scene, ConeAngles cones);

} // namespace editor
