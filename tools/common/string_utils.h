#pragma once

#include <host/clipboard/clipboard.h>
#include <host/core/stack_tracker.h>

#include <cstddef>
#include <memory>
#include <string>

namespace Zar::StringUtils {

/// The clipboard format of plain text in these characters.
template <typename Char>
inline constexpr unsigned clipboardTextFormat = 0;
template <>
inline constexpr unsigned clipboardTextFormat<char> = platform::textFormat;

/// Holds the clipboard open for its own lifetime.
class ClipboardAccess
{
public:
    ClipboardAccess() : m_open(platform::OpenClipboard(nullptr)) {}
    ~ClipboardAccess()
    {
        if (m_open)
            platform::CloseClipboard();
    }
    ClipboardAccess(const ClipboardAccess&) = delete;
    ClipboardAccess& operator=(const ClipboardAccess&) = delete;

    explicit operator bool() const noexcept { return m_open; }

private:
    bool m_open;
};

/// Replaces the contents of the clipboard with the text and a terminating NUL. False when the
/// clipboard cannot be opened, emptied, or given the memory; it then keeps its contents.
template <typename Char>
bool copyToClipboardT(const std::basic_string<Char>& text)
{
    static_assert(clipboardTextFormat<Char> != 0);
    const StackTrackerScope tracked("Zar::StringUtils::copyToClipboardT", "string_utils");
    const ClipboardAccess access;
    if (!access)
        return false;
    const std::size_t size = (text.size() + 1) * sizeof(Char);
    const platform::GlobalHandle block = platform::GlobalAlloc(platform::movableMemory, size);
    if (!block)
        return false;
    if (!platform::EmptyClipboard()) {
        platform::GlobalFree(block);
        return false;
    }
    auto* characters = static_cast<Char*>(platform::GlobalLock(block));
    text.copy(characters, text.size());
    characters[text.size()] = Char();
    platform::GlobalUnlock(block);
    platform::SetClipboardData(clipboardTextFormat<Char>, block);
    return true;
}

/// Whether the clipboard offers plain text.
template <typename Char>
bool canCopyFromClipboardT()
{
    static_assert(clipboardTextFormat<Char> != 0);
    const StackTrackerScope tracked("Zar::StringUtils::canCopyFromClipboardT", "string_utils");
    const ClipboardAccess access;
    return access && platform::IsClipboardFormatAvailable(clipboardTextFormat<Char>);
}

/// Sets `text` to the plain text on the clipboard, up to its first NUL. False, with `text` as it
/// was, when there is none.
template <typename Char>
bool copyFromClipboardT(std::basic_string<Char>& text)
{
    static_assert(clipboardTextFormat<Char> != 0);
    const StackTrackerScope tracked("Zar::StringUtils::copyFromClipboardT", "string_utils");
    const ClipboardAccess access;
    if (!access)
        return false;
    const platform::GlobalHandle block = platform::GetClipboardData(clipboardTextFormat<Char>);
    if (!block)
        return false;
    text = static_cast<const Char*>(platform::GlobalLock(block));
    platform::GlobalUnlock(block);
    return true;
}

/// The clipboard's bytes in that format as they are there now, for long texts: without a copy where
/// the clipboard can share them. The text ends at their first NUL. Null when there is none.
template <typename Char>
std::shared_ptr<const platform::GlobalBlock> shareFromClipboardT()
{
    static_assert(clipboardTextFormat<Char> != 0);
    // By the name under which a text is known to be read in reports.
    const StackTrackerScope tracked("Zar::StringUtils::copyFromClipboardT", "string_utils");
    const ClipboardAccess access;
    return access ? platform::shareClipboardData(clipboardTextFormat<Char>) : nullptr;
}

} // namespace Zar::StringUtils
