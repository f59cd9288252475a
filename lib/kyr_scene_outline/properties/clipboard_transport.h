#pragma once

#include <host/clipboard/clipboard.h>
#include <host/core/string_ref.h>
#include <host/data_section/binary_block.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

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

/// The clipboard's plain text up to its first NUL byte, for a document to be rebuilt from. It is
/// shared with the clipboard where that can be, which is open only while it is taken.
class TakenText
{
public:
    /// Nothing when there is no text, or an empty one.
    static std::optional<TakenText> fromClipboard();

    /// Looks for the end a piece further. False when it was found.
    bool findEnd();
    /// The text, once its end was found.
    Zar::SmartPointer<Zar::BinaryBlock> document() const;

private:
    using Block = std::shared_ptr<const Zar::platform::GlobalBlock>;

    explicit TakenText(Block block) : m_block(std::move(block)) {}

    Block m_block;
    std::size_t m_size = 0;
};

} // namespace kyr::properties
