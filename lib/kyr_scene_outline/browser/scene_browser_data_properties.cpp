#include <kyr_scene_outline/scene_browser_data.h>

#include <kyr_scene_outline/properties/clipboard_transport.h>
#include <kyr_scene_outline/properties/property_copy_job.h>
#include <kyr_scene_outline/properties/property_document.h>
#include <kyr_scene_outline/properties/property_paste_job.h>

#include <host/core/debug_message.h>
#include <host/core/stack_tracker.h>

#include <QPointer>

#include <chrono>
#include <optional>
#include <utility>

namespace {

using kyr::properties::CopyJob;
using kyr::properties::PasteJob;
using kyr::properties::TakenText;

constexpr const char* sourceFile = "scene_browser_data";

std::nullptr_t fail(const char* reason)
{
    Zar::DebugMessageHelper(0, 5).message("%s", reason);
    return nullptr;
}

bool runToEnd(PropertyJob& job)
{
    job.advance(std::chrono::nanoseconds::max());
    return job.hasSucceeded();
}

} // namespace

std::unique_ptr<PropertyJob> SceneBrowserData::startCopy(PropertyChoice choice)
{
    const Zar::StackTrackerScope entry("SceneBrowserData::copyProperties", sourceFile);
    if (!m_assetSelection)
        return fail("Copy properties: item selection is not set for this Scene Browser instance");
    if (!m_assetModel)
        return fail("Copy properties: item model is not set for this Scene Browser instance");
    const IAssetModel* assetModel = m_assetModel; // the browser may end in any of the calls
    IAssetSelection::Objects objects = m_assetSelection->objects();
    if (objects.empty())
        return fail("Copy properties: item selection is empty");

    kyr::properties::collectObjectsInModelOrder(objects, assetModel);
    return std::make_unique<CopyJob>(std::move(objects), std::move(choice));
}

bool SceneBrowserData::copyProperties()
{
    const QPointer<SceneBrowserData> self(this);
    const std::unique_ptr<PropertyJob> job = startCopy();
    return self && job && runToEnd(*job);
}

std::unique_ptr<PropertyJob> SceneBrowserData::startPaste(PropertyChoice choice)
{
    return makePasteJob(std::move(choice), false);
}

std::unique_ptr<PropertyJob> SceneBrowserData::startPastePreview()
{
    return makePasteJob({}, true);
}

std::unique_ptr<PropertyJob> SceneBrowserData::makePasteJob(PropertyChoice choice, bool isPreview)
{
    const Zar::StackTrackerScope entry("SceneBrowserData::pasteProperties", sourceFile);
    if (!m_assetSelection)
        return fail("Paste properties: item selection is not set for this Scene Browser instance");
    if (!m_assetModel)
        return fail("Paste properties: item model is not set for this Scene Browser instance");
    const IAssetModel* assetModel = m_assetModel; // the browser may end in any of the calls
    IAssetSelection& assetSelection = *m_assetSelection;
    IAssetSelection::Objects targets = assetSelection.objects();
    if (targets.empty())
        return fail("Paste properties: item selection is empty");

    kyr::properties::collectObjectsInModelOrder(targets, assetModel);
    std::optional<TakenText> text = TakenText::fromClipboard();
    if (!text)
        return fail("Paste properties: clipboard is empty");
    return std::make_unique<PasteJob>(assetSelection, std::move(targets), std::move(*text),
                                      std::move(choice),
                                      isPreview ? PasteJob::Mode::Preview : PasteJob::Mode::Paste);
}

bool SceneBrowserData::pasteProperties()
{
    m_lastPasteReport = {};
    const QPointer<SceneBrowserData> self(this);
    const std::unique_ptr<PropertyJob> job = startPaste();
    if (!self || !job || !runToEnd(*job))
        return false;
    if (self)
        m_lastPasteReport = job->report();
    return true;
}

const PropertyPasteReport& SceneBrowserData::lastPasteReport() const
{
    return m_lastPasteReport;
}
