#pragma once

#include <editor/files/scene_import.h>

namespace editor {

/// `error` is the bare reason. May throw what its libraries throw.
SceneImport importWithAssimp(const QString& path, const ImportProgress& progress);

/// Takes a suffix without its dot.
bool isAssimpFormat(const QString& suffix);
QStringList assimpPatterns();

} // namespace editor
