#pragma once

#include <editor/files/importer/assimp_values.h>

struct aiNode;
struct aiScene;

namespace editor {

class SceneStreamWriter;
struct GltfDocument;

/// Whether the root node does nothing but hold the others.
bool hasBareRoot(const aiScene& scene);
/// Whether the library has made a node of each node of the file, with one above several roots.
bool isLikeGltf(const aiNode& root, const GltfDocument& gltf);

/// Writes what the imported scene holds. Every node becomes an object: one with a single mesh, or
/// with a light or camera, is that itself; what it has besides becomes children. A bare root is
/// the scene. `gltf` is what the file itself says of the nodes,
/// which are like those; null when that is not known.
void writeObjects(const aiScene& scene, const GltfDocument* gltf, ConeAngles cones,
                  SceneStreamWriter& writer);

} // namespace editor
