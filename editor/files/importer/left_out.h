#pragma once

#include <QStringList>

struct aiScene;

namespace editor {

/// What of an imported scene this editor has no place for; a sentence each. Call before the scene
/// is worked on.
QStringList leftOut(const aiScene& scene);

} // namespace editor
