#pragma once

#include <editor/files/scene_import.h>

namespace editor {

/// Reads the bundled format. `error` is the bare reason. A single value that is none of its
/// property is reported to the log and left at its default.
SceneImport readKyrscene(const QString& path, const ImportProgress& progress);

} // namespace editor
