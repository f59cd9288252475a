#include "scene_browser_data.h"

#include "clipboard_transport.h"
#include "property_document.h"

#include <host/core/debug_message.h>
#include <host/core/stack_tracker.h>
#include <host/undo/commit_changes_scope.h>

#include <chrono>
#include <cstdint>

namespace {

constexpr const char* sourceFile = "scene_browser_data";

bool fail(const char* reason)
{
    Zar::DebugMessageHelper(0, 5).message("%s", reason);
    return false;
}

} // namespace

bool SceneBrowserData::copyProperties()
{
    const Zar::StackTrackerScope entry("SceneBrowserData::copyProperties", sourceFile);
    if (!m_assetSelection)
        return fail("Copy properties: item selection is not set for this Scene Browser instance");
    if (!m_assetModel)
        return fail("Copy properties: item model is not set for this Scene Browser instance");
    IAssetSelection::Objects objects = m_assetSelection->objects();
    if (objects.empty())
        return fail("Copy properties: item selection is empty");

    kyr::properties::collectObjectsInModelOrder(objects, m_assetModel);
    const Zar::DataSectionPtr document = kyr::properties::buildPropertyDocument(objects);
    if (!kyr::properties::putDocumentOnClipboard(document))
        return fail("Copy properties: Cannot paste copied data to clipboard");
    return true;
}

bool SceneBrowserData::pasteProperties()
{
    const Zar::StackTrackerScope entry("SceneBrowserData::pasteProperties", sourceFile);
    m_lastPasteReport = {};
    if (!m_assetSelection)
        return fail("Paste properties: item selection is not set for this Scene Browser instance");
    if (!m_assetModel)
        return fail("Paste properties: item model is not set for this Scene Browser instance");
    IAssetSelection::Objects targets = m_assetSelection->objects();
    if (targets.empty())
        return fail("Paste properties: item selection is empty");

    kyr::properties::collectObjectsInModelOrder(targets, m_assetModel);
    const Zar::DataSectionPtr document = kyr::properties::takeDocumentFromClipboard();
    if (!document || document->countChildren() == 0)
        return fail("Paste properties: clipboard is empty");

    const std::shared_ptr<Zar::ChangesController> controller =
        m_assetSelection->changesController().lock();
    const Zar::CommitChangesScope change("Paste property values from clipboard to selected items",
                                         controller.get());
    m_assetSelection->clearSelection();
    const auto start = std::chrono::steady_clock::now();
    const bool ok = kyr::properties::pasteDocument(targets, document, &m_lastPasteReport);
    m_assetSelection->setSelection(targets, false);
    if (ok) {
        const std::chrono::nanoseconds elapsed = std::chrono::steady_clock::now() - start;
        Zar::DebugMessageHelper(0, 2).message(
            "Paste finished in %u ms", static_cast<std::uint32_t>(elapsed.count() / 1000000));
    }
    return ok;
}

const PropertyPasteReport& SceneBrowserData::lastPasteReport() const
{
    return m_lastPasteReport;
}
