#include "xml_scan.h"

#include <charconv>
#include <cstdint>
#include <cstring>
#include <utility>

namespace Zar::xml {
namespace {

constexpr std::size_t maximumBytes = std::size_t(512) << 20;
constexpr std::size_t maximumMemory = std::size_t(2) << 30;
constexpr int maximumDepth = 256;
// What the parser takes for a node and for an attribute.
constexpr std::size_t nodeBytes = 64;
constexpr std::size_t attributeBytes = 40;

bool startsWith(StringRef text, StringRef prefix) noexcept
{
    return text.substr(0, prefix.size()) == prefix;
}

bool isWhiteSpace(StringRef text) noexcept
{
    return text.find_first_not_of(" \t\n\r") == StringRef::npos;
}

bool isCharacterNumber(StringRef digits, int base) noexcept
{
    std::uint32_t code = 0;
    const char* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, code, base);
    if (digits.empty() || result.ec != std::errc() || result.ptr != end)
        return false;
    if (code < 0x20)
        return code == '\t' || code == '\n' || code == '\r';
    return code < 0xd800 || (code >= 0xe000 && code < 0xfffe) ||
           (code >= 0x10000 && code < 0x110000);
}

bool isReference(StringRef name) noexcept
{
    if (startsWith(name, "#x"))
        return isCharacterNumber(name.substr(2), 16);
    if (startsWith(name, "#"))
        return isCharacterNumber(name.substr(1), 10);
    return name == "amp" || name == "lt" || name == "gt" || name == "quot" || name == "apos";
}

// Leading zeros aside, no reference is longer.
constexpr std::size_t longestReference = 12;

StringRef between(const char* begin, const char* end) noexcept
{
    return {begin, std::size_t(end - begin)};
}

} // namespace

Scan::Scan(StringRef document) noexcept
    : m_at(document.data()), m_end(m_at + document.size()), m_memory(2 * document.size())
{
    m_reference = find(m_at, '&');
    if (document.empty() || document.size() > maximumBytes || !takeText())
        m_state = State::Failed;
}

Scan::State Scan::advance(const char* end) noexcept
{
    while (m_state == State::Running && (m_depth > 1 || m_at < end || m_at == m_end)) {
        if (m_at == m_end)
            m_state = m_depth == 0 && m_rootEnd ? State::Finished : State::Failed;
        else if (!takeMarkup() || m_memory > maximumMemory || !takeText())
            m_state = State::Failed;
    }
    return m_state;
}

// The end of the document when there is none.
const char* Scan::find(const char* from, char wanted) const noexcept
{
    const void* found = std::memchr(from, wanted, std::size_t(m_end - from));
    return found ? static_cast<const char*>(found) : m_end;
}

// Up to the next markup or the end.
bool Scan::takeText() noexcept
{
    const char* begin = std::exchange(m_at, find(m_at, '<'));
    return m_depth == 0 ? isWhiteSpace(between(begin, m_at)) : hasOnlyKnownReferences(begin, m_at);
}

bool Scan::takeMarkup() noexcept
{
    // For the element, or for a text behind any other markup.
    m_memory += nodeBytes;
    switch (m_at + 1 != m_end ? m_at[1] : '\0') {
    case '/':
        return takeEndTag();
    case '?':
        return takeThrough("?>", 2);
    case '!':
        return takeCommentOrData();
    default:
        return takeStartTag();
    }
}

bool Scan::takeCommentOrData() noexcept
{
    if (startsWith(between(m_at, m_end), "<!--"))
        return takeThrough("-->", 4);
    if (m_depth == 0 || !startsWith(between(m_at, m_end), "<![CDATA["))
        return false;
    m_memory += nodeBytes;
    return takeThrough("]]>", 9);
}

bool Scan::takeThrough(StringRef end, std::size_t from) noexcept
{
    const std::size_t found = between(m_at, m_end).find(end, from);
    if (found == StringRef::npos)
        return false;
    m_at += found + end.size();
    return true;
}

bool Scan::takeEndTag() noexcept
{
    if (--m_depth > 0) {
        // The name is for the parser to compare; it goes with the text behind the tag.
        m_at += 2;
        return true;
    }
    m_rootEnd = m_at;
    return m_depth == 0 && takeThrough(">", 2);
}

bool Scan::takeStartTag() noexcept
{
    if (m_depth == 0 && !m_rootTag.empty())
        return false;
    const char* at = findQuoteOrEnd(m_at + 1);
    while (at != m_end && *at != '>') {
        const char* end = find(at + 1, *at);
        if (end == m_end || !isAttributeValue(at + 1, end))
            return false;
        m_memory += attributeBytes;
        at = findQuoteOrEnd(end + 1);
    }
    if (at == m_end)
        return false;
    const bool empty = at[-1] == '/';
    const char* begin = std::exchange(m_at, at + 1);
    if (m_depth == 0) {
        m_rootTag = between(begin, m_at);
        m_rootEnd = empty ? m_at : nullptr;
    }
    return empty || ++m_depth <= maximumDepth;
}

// Names are short: looking at each byte beats a search for each of the three.
const char* Scan::findQuoteOrEnd(const char* from) const noexcept
{
    while (from != m_end && *from != '>' && *from != '"' && *from != '\'')
        ++from;
    return from;
}

bool Scan::isAttributeValue(const char* begin, const char* end) noexcept
{
    return between(begin, end).find('<') == StringRef::npos && hasOnlyKnownReferences(begin, end);
}

// Most texts have no reference at all: the next one of the whole document is kept in mind.
bool Scan::hasOnlyKnownReferences(const char* begin, const char* end) noexcept
{
    for (const char* from = begin;; from = m_reference + 1) {
        if (m_reference < from)
            m_reference = find(from, '&');
        if (m_reference >= end)
            return true;
        const StringRef start = between(m_reference + 1, end).substr(0, longestReference);
        const std::size_t length = start.find(';');
        if (length == StringRef::npos || !isReference(start.substr(0, length)))
            return false;
    }
}

} // namespace Zar::xml
