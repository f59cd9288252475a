#pragma once

#include <QStringList>

struct aiScene;

namespace editor {

/// What of an imported scene this editor has no place for; a sentence each. Call before the scene
/// is worked on.
QStringList leftOut(const aiScene& scene);
/// The name of a bare root in the file `path`, which nothing shows any more; a sentence when there
/// was one.
QStringList lostRoot(const aiScene& scene, const QString& path);

} // namespace editor
