#pragma once

#include <editor/document/scene_shape.h>
#include <editor/files/scene_import.h>

#include <optional>

namespace editor {

/// A scene that is made up, to see how the editor behaves at its size.
struct SceneRecipe
{
    static constexpr int mostObjects = 1'000'000;

    /// From 1 to `mostObjects`; the root does not count.
    int size = 1;
    SceneShape shape = SceneShape::Bushy;
};

/// "flat", "levels", "chain", "parents" or "bushy"; nothing for any other name.
std::optional<SceneShape> sceneShapeOf(const QString& name);
/// What users see the scene called.
QString titleOf(const SceneRecipe& recipe);

/// Groups, meshes and lights with numbered names, which stand in a square. Re-entrant; throws
/// nothing. Without root and error when it was stopped.
SceneImport generateScene(const SceneRecipe& recipe, const ImportProgress& progress);

} // namespace editor
