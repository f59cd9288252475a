#pragma once

#include <editor/document/scene_object.h>
#include <editor/viewport/viewport_item.h>

#include <functional>
#include <vector>

namespace editor {

/// How the 3D view shows an object that stands at `world`.
ViewportItem viewportItem(const SceneObject& object, const QMatrix4x4& world);

/// Calls `visit` with the item of `branch` and of everything below it, parents first. O(n).
void forEachViewportItem(const SceneObject& branch, const std::function<void(ViewportItem)>& visit);

} // namespace editor
