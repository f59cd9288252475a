#pragma once

#include <editor/document/scene_object.h>

#include <QString>

namespace editor {

/// Writes the scene to `path` in the format of its suffix: "kyrscene" keeps everything, "gltf"
/// and "glb" keep what other programs understand. The file is replaced only when all went well.
/// Returns nothing on success, else one sentence that names the file and the reason.
QString writeScene(const SceneObject& root, const QString& path);

/// Whether `path` has a suffix that `writeScene` knows.
bool canWriteScene(const QString& path);

} // namespace editor
