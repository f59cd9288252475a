#pragma once

#include <editor/document/scene_object.h>
#include <editor/viewport/items/viewport_item.h>

#include <limits>
#include <vector>

namespace editor {

/// How the 3D view shows an object that stands at `world`.
ViewportItem viewportItem(const SceneObject& object, const QMatrix4x4& world);

/// The items of `branch` and of everything below it, branch by branch; none if they are more than
/// `most`. O(n).
std::vector<ViewportItem> viewportItems(const SceneObject& branch,
                                        std::size_t most = std::numeric_limits<std::size_t>::max());

} // namespace editor
