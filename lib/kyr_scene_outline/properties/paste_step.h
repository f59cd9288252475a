#pragma once

#include <host/scene/asset_selection.h>
#include <host/undo/commit_changes_scope.h>
#include <kyr_scene_outline/properties/property_document.h>

#include <memory>
#include <optional>

namespace kyr::properties {

/// The undo step of a paste. Unless it is kept, its end takes back the changes recorded under it
/// and the values in `progress.earlier`, and selects again what was selected.
class PasteStep
{
public:
    /// All must outlive the step.
    PasteStep(IAssetSelection& selection, PasteProgress& progress);
    ~PasteStep();
    PasteStep(const PasteStep&) = delete;
    PasteStep& operator=(const PasteStep&) = delete;

    void keep();

private:
    IAssetSelection& m_selection;
    PasteProgress& m_progress;
    IAssetSelection::Objects m_selectedBefore;
    std::shared_ptr<Zar::ChangesController> m_controller;
    std::optional<Zar::CommitChangesScope> m_scope;
};

} // namespace kyr::properties
