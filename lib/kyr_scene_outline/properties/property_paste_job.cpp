#include "property_paste_job.h"

#include <host/core/debug_message.h>

#include <cstdint>
#include <utility>

namespace kyr::properties {

PasteJob::PasteJob(IAssetSelection& selection, IAssetSelection::Objects targets,
                   Zar::SmartPointer<Zar::BinaryBlock> document, PropertyChoice choice, Mode mode)
    : PropertyJob("SceneBrowserData::pasteProperties", targets.size())
    , m_selection(selection)
    , m_targets(std::move(targets))
    , m_reader(std::in_place, "objects", std::move(document), true)
{
    m_progress.choice = std::move(choice);
    m_progress.isPreview = mode == Mode::Preview;
}

double PasteJob::preparation() const noexcept
{
    return m_isPrepared ? 1 : 0.99 * (m_reader ? m_reader->progress() : 1);
}

bool PasteJob::prepare()
{
    if (m_reader) {
        if (m_reader->advance())
            return true;
        m_document = m_reader->document();
        m_reader.reset();
        if (m_document && m_document->firstChild())
            return true;
        Zar::DebugMessageHelper(0, 5).message("Paste properties: clipboard is empty");
        return false;
    }
    if (!m_progress.isPreview && !m_step) {
        m_step.emplace(m_selection, m_progress);
        m_start = Clock::now();
        m_selection.clearSelection();
        return true;
    }
    m_isPrepared = true;
    // Also reports a document without objects, for which there is no object to work on.
    m_hasObjects = pasteDocument(m_targets, m_document, &m_progress, 0);
    return true;
}

bool PasteJob::workOn(std::size_t)
{
    const Zar::MessageGroup::Scope onceAPaste(m_messages);
    return m_hasObjects && pasteDocument(m_targets, m_document, &m_progress, 1);
}

bool PasteJob::finish()
{
    if (m_progress.isPreview)
        return m_hasObjects;
    m_selection.setSelection(m_targets, false);
    if (m_hasObjects) {
        const std::chrono::nanoseconds elapsed = Clock::now() - m_start;
        Zar::DebugMessageHelper(0, 2).message("Paste finished in %u ms",
                                              std::uint32_t(elapsed.count() / 1000000));
    }
    m_step->keep();
    m_step.reset();
    return m_hasObjects;
}

} // namespace kyr::properties
