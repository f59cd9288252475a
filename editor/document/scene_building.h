#pragma once

#include <editor/document/scene_document.h>
#include <host/scene/asset_selection.h>

namespace editor {

// One undo step each, in which what came of it is selected. False when nothing was done.

/// Puts a free object at `world`: into the primary selected object if that is there to hold others,
/// else behind it; at the end of the scene when nothing is selected.
bool addObject(SceneDocument& document, IAssetSelection& selection, const SceneObjectPtr& object,
               const QMatrix4x4& world);
bool groupSelected(SceneDocument& document, IAssetSelection& selection, const std::string& name);
bool ungroupSelected(SceneDocument& document, IAssetSelection& selection);

/// Free objects that had one parent.
struct CopiedObjects
{
    /// Where the parent stood in the world.
    QMatrix4x4 parentWorld;
    SceneObjects objects;
};

/// Puts the objects behind the primary selected one, under names that are free there, at the places
/// in the world that they had.
bool pasteObjects(SceneDocument& document, IAssetSelection& selection,
                  const std::vector<CopiedObjects>& copied);

/// Names the selection; a set that has the name already is replaced.
bool saveSelectionSet(SceneDocument& document, const IAssetSelection& selection,
                      const std::string& name);
bool recallSelectionSet(const SceneDocument& document, IAssetSelection& selection,
                        std::size_t index);
bool removeSelectionSet(SceneDocument& document, std::size_t index);

} // namespace editor
