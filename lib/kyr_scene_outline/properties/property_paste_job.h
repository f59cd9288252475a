#pragma once

#include <host/scene/asset_selection.h>
#include <host/undo/commit_changes_scope.h>
#include <kyr_scene_outline/properties/document_paste.h>
#include <kyr_scene_outline/property_job.h>

#include <chrono>
#include <memory>
#include <optional>

namespace kyr::properties {

/// Deselects everything, pastes the document to the targets and selects these, all in one step.
class PasteJob final : public PropertyPasteJob
{
public:
    PasteJob(IAssetSelection& selection, IAssetSelection::Objects targets,
             const Zar::DataSectionPtr& document);
    ~PasteJob() override;

    const PropertyPasteReport& report() const noexcept override { return m_paste.report(); }

private:
    using Clock = std::chrono::steady_clock;

    bool workOn(std::size_t object) override;
    bool finish() override;

    IAssetSelection& m_selection;
    IAssetSelection::Objects m_targets;
    std::shared_ptr<Zar::ChangesController> m_controller;
    std::optional<Zar::CommitChangesScope> m_change;
    Clock::time_point m_start;
    DocumentPaste m_paste;
};

} // namespace kyr::properties
