#pragma once

#include <host/core/message_group.h>
#include <host/data_section/xml_reader.h>
#include <host/scene/asset_selection.h>
#include <kyr_scene_outline/properties/clipboard_transport.h>
#include <kyr_scene_outline/properties/paste_step.h>
#include <kyr_scene_outline/properties/property_document.h>
#include <kyr_scene_outline/property_job.h>

#include <optional>

namespace kyr::properties {

/// Reads the document, deselects everything, pastes to the targets and selects these, all in one
/// step. A preview reads and counts, and changes nothing.
class PasteJob final : public PropertyJob
{
public:
    enum class Mode
    {
        Paste,
        Preview,
    };

    PasteJob(IAssetSelection& selection, IAssetSelection::Objects targets, TakenText text,
             PropertyChoice choice, Mode mode);

    const PropertyPasteReport& report() const noexcept override { return m_progress.report; }

private:
    double preparation() const noexcept override;
    bool prepare() override;
    bool read();
    bool workOn(std::size_t object) override;
    bool finish() override;
    void takeBack() noexcept override { m_step.reset(); }

    IAssetSelection& m_selection;
    IAssetSelection::Objects m_targets;
    // Each is gone once it is done with.
    std::optional<TakenText> m_text;
    std::optional<Zar::XMLReader> m_reader;
    bool m_hasChildren = false;
    PasteProgress m_progress;
    std::optional<PasteStep> m_step;
    Zar::MessageGroup m_messages;
    Clock::time_point m_start;
    bool m_isPrepared = false;
    bool m_hasObjects = true;
};

} // namespace kyr::properties
