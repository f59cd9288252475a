#pragma once

#include <QString>

struct aiScene;

namespace editor {

/// Makes an imported scene safe to work on: what importers leave half-made is taken out (missing
/// nodes, morph targets). Returns nothing, or what is damaged beyond that: a mesh that refers to
/// vertices it does not have.
QString repairScene(aiScene& scene);

} // namespace editor
