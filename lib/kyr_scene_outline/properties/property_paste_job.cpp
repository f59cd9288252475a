#include "property_paste_job.h"

#include <host/core/debug_message.h>

#include <cstdint>
#include <utility>

namespace kyr::properties {
namespace {

/// The paste counts its time from here.
std::chrono::steady_clock::time_point deselectAll(IAssetSelection& selection)
{
    selection.clearSelection();
    return std::chrono::steady_clock::now();
}

} // namespace

PasteJob::PasteJob(IAssetSelection& selection, IAssetSelection::Objects targets,
                   const Zar::DataSectionPtr& document)
    : PropertyPasteJob("SceneBrowserData::pasteProperties", targets.size())
    , m_selection(selection)
    , m_targets(std::move(targets))
    , m_controller(selection.changesController().lock())
    , m_change(std::in_place, "Paste property values from clipboard to selected items",
               m_controller.get())
    , m_start(deselectAll(selection))
    , m_paste(document, m_targets.size())
{}

PasteJob::~PasteJob()
{
    if (!isFinished())
        m_change->discard();
}

bool PasteJob::workOn(std::size_t object)
{
    if (m_paste.isEmpty())
        return false;
    m_paste.pasteTo(object, m_targets[object].object());
    return true;
}

bool PasteJob::finish()
{
    m_selection.setSelection(m_targets, false);
    if (!m_paste.isEmpty()) {
        const std::chrono::nanoseconds elapsed = Clock::now() - m_start;
        Zar::DebugMessageHelper(0, 2).message(
            "Paste finished in %u ms", static_cast<std::uint32_t>(elapsed.count() / 1000000));
    }
    m_change.reset();
    return !m_paste.isEmpty();
}

} // namespace kyr::properties
