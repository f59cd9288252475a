#include "clipboard_text.h"

#include <host/clipboard/clipboard.h>

#include <cstring>

namespace editor {

namespace {

using namespace Zar::platform;

/// The clipboard, open for as long as the object lives.
class OpenedClipboard
{
public:
    OpenedClipboard() : m_isOpen(OpenClipboard(nullptr)) {}
    ~OpenedClipboard()
    {
        if (m_isOpen)
            CloseClipboard();
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;

    explicit operator bool() const noexcept { return m_isOpen; }

private:
    bool m_isOpen;
};

} // namespace

bool putClipboardText(const QByteArray& text)
{
    const OpenedClipboard opened;
    if (!opened || !EmptyClipboard())
        return false;
    const GlobalHandle block = GlobalAlloc(movableMemory, std::size_t(text.size()));
    void* const memory = GlobalLock(block);
    if (!memory)
        return false;
    std::memcpy(memory, text.constData(), std::size_t(text.size()));
    GlobalUnlock(block);
    return SetClipboardData(textFormat, block);
}

std::optional<QByteArray> clipboardText()
{
    const OpenedClipboard opened;
    if (!opened || !IsClipboardFormatAvailable(textFormat))
        return std::nullopt;
    const GlobalHandle block = GetClipboardData(textFormat);
    const auto* text = static_cast<const char*>(GlobalLock(block));
    if (!text)
        return std::nullopt;
    QByteArray copy(text);
    GlobalUnlock(block);
    return copy;
}

} // namespace editor
