#include "property_paste_job.h"

#include <host/core/debug_message.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace kyr::properties {

PasteJob::PasteJob(IAssetSelection& selection, IAssetSelection::Objects targets, TakenText text,
                   PropertyChoice choice, Mode mode)
    : PropertyJob("SceneBrowserData::pasteProperties", targets.size())
    , m_selection(selection)
    , m_targets(std::move(targets))
    , m_text(std::move(text))
{
    m_progress.choice = std::move(choice);
    m_progress.isPreview = mode == Mode::Preview;
}

double PasteJob::preparation() const noexcept
{
    constexpr double allButAll = 0.99;
    if (m_isPrepared)
        return 1;
    if (m_text)
        return 0;
    return allButAll * (m_reader ? m_reader->progress() : 1);
}

bool PasteJob::prepare()
{
    if (m_text) {
        if (!m_text->findEnd()) {
            m_reader.emplace("objects", m_text->document(), true);
            m_text.reset();
        }
        return true;
    }
    if (m_reader)
        return read();
    if (!m_progress.isPreview && !m_step) {
        m_step.emplace(m_selection, m_progress);
        return true;
    }
    if (!m_progress.isPreview) {
        m_selection.clearSelection();
        m_start = Clock::now();
    }
    m_isPrepared = true;
    // Also reports a document without objects, for which there is no object to work on.
    m_hasObjects = pasteDocument(m_targets, nullptr, &m_progress, 0);
    return true;
}

// The document is never there as a whole, and what was dealt is let go of on the way.
bool PasteJob::read()
{
    const bool goesOn = m_reader->advance();
    if (const Zar::DataSectionPtr part = m_reader->takeChildren()) {
        m_hasChildren = true;
        part->openSections("object", m_progress.sources, nullptr);
        // No target gets one behind these.
        m_progress.sources.resize(std::min(m_progress.sources.size(), m_targets.size()));
    }
    if (goesOn)
        return true;
    const bool isDocument = m_reader->document() != nullptr;
    m_reader.reset();
    if (isDocument && m_hasChildren)
        return true;
    Zar::DebugMessageHelper(0, 5).message("Paste properties: clipboard is empty");
    return false;
}

bool PasteJob::workOn(std::size_t)
{
    const Zar::MessageGroup::Scope onceAPaste(m_messages);
    return m_hasObjects && pasteDocument(m_targets, nullptr, &m_progress, 1);
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
