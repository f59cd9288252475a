#include "clipboard_transport.h"

#include <host/core/debug_message.h>
#include <tools/common/string_utils.h>

#include <utility>

namespace kyr::properties {

bool putDocumentOnClipboard(const Zar::SmartPointer<Zar::BinaryBlock>& document)
{
    // Reports have always named it so.
    if (!Zar::verify(static_cast<bool>(document), "binary", "scene_browser_data"))
        return false;
    return Zar::StringUtils::copyToClipboardT(std::string(document->bytes()));
}

Zar::SmartPointer<Zar::BinaryBlock> takeDocumentFromClipboard()
{
    if (!Zar::StringUtils::canCopyFromClipboardT<char>())
        return nullptr;
    std::string text;
    if (!Zar::StringUtils::copyFromClipboardT(text) || text.empty())
        return nullptr;
    return new Zar::BinaryBlock(std::move(text), "BinaryBlock/XMLSection");
}

} // namespace kyr::properties
