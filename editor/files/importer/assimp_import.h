#pragma once

#include <QString>

namespace editor {

class SceneStreamWriter;

/// Reads the file and writes the scene in it, or the bare reason why there is none. May throw what
/// its libraries throw.
void importWithAssimp(const QString& path, SceneStreamWriter& writer);

} // namespace editor
