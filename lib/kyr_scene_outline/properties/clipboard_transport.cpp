#include "clipboard_transport.h"

#include <tools/common/string_utils.h>

#include <utility>

namespace kyr::properties {

namespace platform = Zar::platform;

ClipboardText::~ClipboardText()
{
    if (m_block)
        platform::GlobalFree(m_block);
}

bool ClipboardText::reserve(std::size_t size)
{
    m_block = platform::GlobalAlloc(platform::movableMemory, size + 1);
    return m_block != nullptr;
}

void ClipboardText::append(Zar::StringRef piece)
{
    auto* characters = static_cast<char*>(platform::GlobalLock(m_block));
    piece.copy(characters + m_size, piece.size());
    platform::GlobalUnlock(m_block);
    m_size += piece.size();
}

bool ClipboardText::put()
{
    const Zar::StringUtils::ClipboardAccess access;
    if (!access || !platform::EmptyClipboard())
        return false;
    // A text that the clipboard does not take is lost with what was there, as ever.
    platform::SetClipboardData(platform::textFormat, std::exchange(m_block, nullptr));
    return true;
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
