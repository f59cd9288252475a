#include "clipboard_transport.h"

#include <tools/common/string_utils.h>

#include <algorithm>
#include <cstring>
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

std::optional<TakenText> TakenText::fromClipboard()
{
    if (!Zar::StringUtils::canCopyFromClipboardT<char>())
        return std::nullopt;
    Block block = Zar::StringUtils::shareFromClipboardT<char>();
    if (!block || block->size() == 0 || block->data()[0] == '\0')
        return std::nullopt;
    return TakenText(std::move(block));
}

bool TakenText::findEnd()
{
    constexpr std::size_t pieceBytes = std::size_t(4) << 20;
    const char* start = m_block->data() + m_size;
    const std::size_t size = std::min(pieceBytes, m_block->size() - m_size);
    const void* end = std::memchr(start, '\0', size);
    m_size += end ? std::size_t(static_cast<const char*>(end) - start) : size;
    return !end && m_size < m_block->size();
}

Zar::SmartPointer<Zar::BinaryBlock> TakenText::document() const
{
    return new Zar::BinaryBlock(m_block, Zar::StringRef(m_block->data(), m_size),
                                "BinaryBlock/XMLSection");
}

} // namespace kyr::properties
