#pragma once

#include "assimp_values.h"

struct aiScene;

namespace editor {

class SceneStreamWriter;
struct GltfDocument;

/// Whether the root node does nothing but hold the others.
bool hasBareRoot(const aiScene& scene);

/// Writes what the imported scene holds. Every node becomes an object: one with a single mesh, or
/// with a light or camera, is that itself; what it has besides becomes children. A bare root is
/// the scene. `gltf` is what the file itself says of the nodes;
/// null for files of other formats.
void writeObjects(const aiScene& scene, const GltfDocument* gltf, ConeAngles cones,
                  SceneStreamWriter& writer);

} // namespace editor
