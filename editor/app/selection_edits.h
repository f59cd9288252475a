#pragma once

#include <editor/document/scene_document.h>
#include <host/scene/asset_selection.h>

namespace editor {

/// Makes `objects` the selection, as one undo step.
void setAssetSelection(IAssetSelection& selection, IAssetSelection::Objects objects);

// Selections made from others. Each keeps the order in which objects were selected and costs one
// look-up an object.

/// `objects` behind `present`; those that are in both move to the end, the last one is primary.
IAssetSelection::Objects added(const IAssetSelection::Objects& present,
                               const IAssetSelection::Objects& objects);
/// `present` without those in both, then those of `objects` that were not in it.
IAssetSelection::Objects toggled(const IAssetSelection::Objects& present,
                                 const IAssetSelection::Objects& objects);

/// Every object that is not selected, in tree order.
IAssetSelection::Objects inverted(const SceneDocument& document, const IAssetSelection& selection);
/// The children of the selected objects.
IAssetSelection::Objects childrenOfSelected(const SceneDocument& document,
                                            const IAssetSelection& selection);

/// The parents of the selected objects, each once.
IAssetSelection::Objects parentsOfSelected(const SceneDocument& document,
                                           const IAssetSelection& selection);
/// Every object of a kind that a selected one has, in tree order, the primary one last.
IAssetSelection::Objects sameTypeAsSelected(const SceneDocument& document,
                                            const IAssetSelection& selection);

} // namespace editor
