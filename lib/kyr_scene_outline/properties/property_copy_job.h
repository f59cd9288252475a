#pragma once

#include <host/data_section/xml_writer.h>
#include <host/scene/asset_selection.h>
#include <kyr_scene_outline/properties/clipboard_transport.h>
#include <kyr_scene_outline/property_job.h>

#include <deque>
#include <string>

namespace kyr::properties {

/// Writes the document of the objects, which goes to the clipboard in the end. Each piece is built
/// and written on its own, so that what is in memory is the text and never the whole document.
class CopyJob final : public PropertyJob
{
public:
    CopyJob(IAssetSelection::Objects objects, PropertyChoice choice);

private:
    bool workOn(std::size_t object) override;
    bool wrapUp() override;
    bool finish() override;

    IAssetSelection::Objects m_objects;
    PropertyChoice m_choice;
    Zar::XMLWriter m_writer{"objects"};
    /// What was written, until it is in the text for the clipboard.
    std::deque<std::string> m_pieces;
    ClipboardText m_text;
    bool m_isWritten = false;
    bool m_hasRoom = false;
};

} // namespace kyr::properties
