#pragma once

#include <editor/document/scene_object.h>
#include <editor/files/scene_output.h>

namespace editor {

/// Writes the scene as one glTF 2 file: JSON with its buffer inside, or the binary container.
/// Every object becomes a node of its name, however deep. Throws `WriteFailure`.
void writeGltf(const SceneObject& root, bool binary, SceneOutput& output);

} // namespace editor
