#pragma once

#include <host/data_section/data_section.h>
#include <host/scene/asset_selection.h>
#include <kyr_scene_outline/property_job.h>

namespace kyr::properties {

/// Writes the objects into a document, which goes to the clipboard in the end.
class CopyJob final : public PropertyJob
{
public:
    explicit CopyJob(IAssetSelection::Objects objects);

private:
    bool workOn(std::size_t object) override;
    bool finish() override;

    IAssetSelection::Objects m_objects;
    Zar::DataSectionPtr m_document;
};

} // namespace kyr::properties
