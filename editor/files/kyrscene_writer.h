#pragma once

#include <editor/document/scene_object.h>
#include <editor/files/scene_output.h>

namespace editor {

/// Writes the scene in the bundled format, see kyrscene_format.h. Throws `WriteFailure`.
void writeKyrscene(const SceneObject& root, SceneOutput& output);

} // namespace editor
