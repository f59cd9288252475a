#pragma once

#include <editor/document/scene_document.h>
#include <host/scene/asset_selection.h>

namespace editor {

/// The scene objects of a selection that are in the scene, in selection order.
SceneObjects selectedObjects(const SceneDocument& document, const IAssetSelection& selection);

// One undo step each, selection change included. False when nothing was done.

bool removeSelected(SceneDocument& document, IAssetSelection& selection);
/// Selects the copies.
bool duplicateSelected(SceneDocument& document, IAssetSelection& selection);

/// Gives every selected object that flag; `verb` names the step: "Hide Lamp".
bool setSelectedFlag(SceneDocument& document, const IAssetSelection& selection,
                     std::string_view property, bool on, const char* verb);

} // namespace editor
