#include "property_copy_job.h"

#include "clipboard_transport.h"
#include "property_document.h"

#include <host/core/debug_message.h>

#include <utility>

namespace kyr::properties {

CopyJob::CopyJob(IAssetSelection::Objects objects, PropertyChoice choice)
    : PropertyJob("SceneBrowserData::copyProperties", objects.size())
    , m_objects(std::move(objects))
    , m_choice(std::move(choice))
{}

bool CopyJob::workOn(std::size_t object)
{
    m_writer.writeChildren(*buildPropertyDocument({m_objects[object]}, m_choice));
    if (object == 0)
        m_writer.expect(m_objects.size());
    return true;
}

bool CopyJob::finish()
{
    const bool ok = putDocumentOnClipboard(m_writer.takeBinary());
    if (!ok) {
        Zar::DebugMessageHelper(0, 5).message(
            "Copy properties: Cannot paste copied data to clipboard");
    }
    return ok;
}

} // namespace kyr::properties
