#pragma once

#include <editor/document/scene_object.h>
#include <editor/files/scene_output.h>

#include <QString>

namespace editor {

/// Writes the scene to `path` in the format of its suffix: "kyrscene" keeps everything, "gltf"
/// and "glb" keep what `exportLosses` does not list. The file is replaced only when all went well.
/// Returns nothing on success, else one sentence that names the file and the reason; so it does
/// when `progress` stops it. Re-entrant; blocks. Throws nothing.
QString writeScene(const SceneObject& root, const QString& path,
                   const WriteProgress& progress = {});

/// Whether `path` has a suffix that `writeScene` knows.
bool canWriteScene(const QString& path);
/// Whether it is that of the format that keeps everything.
bool isOwnFormat(const QString& path);

} // namespace editor
