#include "xml_guard.h"

#include <host/data_section/xml_text.h>

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace Zar::xml {
namespace {

constexpr std::size_t maximumBytes = std::size_t(512) << 20;
constexpr std::size_t maximumMemory = std::size_t(1) << 30;
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

bool hasOnlyKnownReferences(StringRef text) noexcept
{
    for (std::size_t i = text.find('&'); i != StringRef::npos; i = text.find('&', i + 1)) {
        const StringRef rest = text.substr(i + 1, longestReference);
        const std::size_t end = rest.find(';');
        if (end == StringRef::npos || !isReference(rest.substr(0, end)))
            return false;
    }
    return true;
}

class Scan
{
public:
    explicit Scan(StringRef document) noexcept : m_rest(document), m_memory(2 * document.size()) {}

    bool run() noexcept
    {
        while (!m_rest.empty()) {
            const bool ok = m_rest.front() == '<' ? takeMarkup() : takeText();
            if (!ok || m_memory > maximumMemory)
                return false;
        }
        return m_depth == 0 && m_roots == 1;
    }

private:
    bool takeText() noexcept
    {
        const StringRef text = m_rest.substr(0, m_rest.find('<'));
        m_rest.remove_prefix(text.size());
        if (m_depth == 0)
            return isWhiteSpace(text);
        m_memory += nodeBytes;
        return hasOnlyKnownReferences(text);
    }

    bool takeMarkup() noexcept
    {
        if (startsWith(m_rest, "<!--"))
            return takeUntil("-->", 4);
        if (startsWith(m_rest, "<?"))
            return takeUntil("?>", 2);
        if (startsWith(m_rest, "<![CDATA[")) {
            m_memory += nodeBytes;
            return m_depth > 0 && takeUntil("]]>", 9);
        }
        if (startsWith(m_rest, "<!"))
            return false;
        if (startsWith(m_rest, "</"))
            return --m_depth >= 0 && takeUntil(">", 2);
        return takeStartTag();
    }

    bool takeUntil(StringRef end, std::size_t from) noexcept
    {
        const std::size_t found = m_rest.find(end, from);
        if (found == StringRef::npos)
            return false;
        m_rest.remove_prefix(found + end.size());
        return true;
    }

    bool takeStartTag() noexcept
    {
        m_memory += nodeBytes;
        if (m_depth == 0 && ++m_roots > 1)
            return false;
        std::size_t i = m_rest.find_first_of("\"'>", 1);
        while (i != StringRef::npos && m_rest[i] != '>') {
            const std::size_t end = m_rest.find(m_rest[i], i + 1);
            if (end == StringRef::npos || !isAttributeValue(m_rest.substr(i + 1, end - i - 1)))
                return false;
            m_memory += attributeBytes;
            i = m_rest.find_first_of("\"'>", end + 1);
        }
        if (i == StringRef::npos)
            return false;
        const bool empty = m_rest[i - 1] == '/';
        m_rest.remove_prefix(i + 1);
        return empty || ++m_depth <= maximumDepth;
    }

    static bool isAttributeValue(StringRef value) noexcept
    {
        return value.find('<') == StringRef::npos && hasOnlyKnownReferences(value);
    }

    StringRef m_rest;
    std::size_t m_memory;
    int m_depth = 0;
    int m_roots = 0;
};

} // namespace

bool isFitForParsing(StringRef document) noexcept
{
    constexpr StringRef byteOrderMark = "\xef\xbb\xbf";
    if (startsWith(document, byteOrderMark))
        document.remove_prefix(byteOrderMark.size());
    return document.size() <= maximumBytes && isValid(document) && Scan(document).run();
}

} // namespace Zar::xml
