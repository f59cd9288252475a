#pragma once

#include <host/clipboard/clipboard.h>
#include <host/core/string_ref.h>
#include <host/data_section/binary_block.h>

#include <cstddef>

namespace kyr::properties {

/// A text on its way to the clipboard, where it arrives in one piece.
class ClipboardText
{
public:
    ClipboardText() = default;
    ~ClipboardText();
    ClipboardText(const ClipboardText&) = delete;
    ClipboardText& operator=(const ClipboardText&) = delete;

    /// Takes memory for so many bytes and a terminating NUL; false when there is not enough.
    bool reserve(std::size_t size);
    /// All pieces together must have the reserved size.
    void append(Zar::StringRef piece);
    /// Replaces the contents of the clipboard; false, with them as they are, when it is held.
    bool put();

private:
    Zar::platform::GlobalHandle m_block = nullptr;
    std::size_t m_size = 0;
};

/// The clipboard's plain text up to its first NUL byte, for a document to be rebuilt from; null
/// when there is none.
Zar::SmartPointer<Zar::BinaryBlock> takeDocumentFromClipboard();

} // namespace kyr::properties
