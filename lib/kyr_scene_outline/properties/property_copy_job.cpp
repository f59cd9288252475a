#include "property_copy_job.h"

#include "clipboard_transport.h"
#include "property_document.h"

#include <host/core/debug_message.h>
#include <host/data_section/xml_section.h>

#include <utility>

namespace kyr::properties {

CopyJob::CopyJob(IAssetSelection::Objects objects)
    : PropertyJob("SceneBrowserData::copyProperties", objects.size())
    , m_objects(std::move(objects))
    , m_document(new Zar::XMLSection("objects"))
{}

bool CopyJob::workOn(std::size_t object)
{
    writeObject(m_objects[object].object(), *m_document);
    return true;
}

bool CopyJob::finish()
{
    const bool ok = putDocumentOnClipboard(m_document);
    if (!ok) {
        Zar::DebugMessageHelper(0, 5).message(
            "Copy properties: Cannot paste copied data to clipboard");
    }
    return ok;
}

} // namespace kyr::properties
