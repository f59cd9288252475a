#pragma once

#include <kyr_scene_outline/property_paste_report.h>

#include <QString>

namespace editor {

/// What a paste did and what it could not do, in one line with the names of the properties.
QString pasteSummary(const PropertyPasteReport& report);

/// Why there is nothing to paste, from what the clipboard holds.
QString whyNothingPasted();

} // namespace editor
