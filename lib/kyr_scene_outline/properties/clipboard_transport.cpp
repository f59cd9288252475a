#include "clipboard_transport.h"

#include <host/core/debug_message.h>
#include <host/data_section/xml_section.h>
#include <tools/common/string_utils.h>

#include <utility>

namespace kyr::properties {

bool putDocumentOnClipboard(const Zar::DataSectionPtr& document)
{
    const Zar::SmartPointer<Zar::BinaryBlock> block = document->asBinary();
    if (!Zar::verify(static_cast<bool>(block), "binary", "scene_browser_data"))
        return false;
    return Zar::StringUtils::copyToClipboardT(std::string(block->data(), block->length()));
}

Zar::DataSectionPtr takeDocumentFromClipboard()
{
    if (!Zar::StringUtils::canCopyFromClipboardT<char>())
        return nullptr;
    std::string text;
    if (!Zar::StringUtils::copyFromClipboardT(text) || text.empty())
        return nullptr;
    const Zar::SmartPointer<Zar::BinaryBlock> block(
        new Zar::BinaryBlock(std::move(text), "BinaryBlock/XMLSection"));
    return Zar::XMLSection::createFromBinary("objects", block, true);
}

} // namespace kyr::properties
