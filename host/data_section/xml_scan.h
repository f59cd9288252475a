#pragma once

#include <host/core/string_ref.h>

#include <cstddef>

namespace Zar::xml {

/// Looks over a document of unknown origin before it is parsed: whether it is one root element
/// without a document type or undefined entities, and whether the tree would stay within 256
/// levels and 2 GB. What remains for the parser is the grammar of tags and UTF-8.
/// One pass in as many pieces as wanted; no allocation, no recursion.
class Scan
{
public:
    enum class State
    {
        Running,
        /// Behind a whole document.
        Finished,
        Failed,
    };

    /// More than 512 MB fail at once.
    explicit Scan(StringRef document) noexcept;

    /// Goes on to the first markup that is at or behind `end` and not below a child of the root.
    State advance(const char* end) noexcept;

    /// Where the scan stands: in front of a markup, or at the end of the document.
    const char* position() const noexcept { return m_at; }
    /// The root's start tag, which may be an empty element's, once that was passed.
    StringRef rootTag() const noexcept { return m_rootTag; }
    /// In front of the root's end tag, or behind an empty root, once that was passed, else null.
    const char* rootEnd() const noexcept { return m_rootEnd; }

private:
    bool takeText() noexcept;
    bool takeMarkup() noexcept;
    bool takeCommentOrData() noexcept;
    bool takeThrough(StringRef end, std::size_t from) noexcept;
    bool takeEndTag() noexcept;
    bool takeStartTag() noexcept;
    const char* find(const char* from, char wanted) const noexcept;
    const char* findQuoteOrEnd(const char* from) const noexcept;
    bool isAttributeValue(const char* begin, const char* end) noexcept;
    bool hasOnlyKnownReferences(const char* begin, const char* end) noexcept;

    const char* m_at;
    const char* m_end;
    const char* m_reference;
    StringRef m_rootTag;
    const char* m_rootEnd = nullptr;
    std::size_t m_memory;
    int m_depth = 0;
    State m_state = State::Running;
};

} // namespace Zar::xml
