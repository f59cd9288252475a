#include "xml_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace Zar::xml {
namespace {

constexpr StringRef whiteSpace = " \t\n\r";

unsigned char byteAt(StringRef text, std::size_t i) noexcept
{
    return static_cast<unsigned char>(text[i]);
}

bool isAllowedAscii(unsigned char byte) noexcept
{
    return byte >= 0x20 || byte == '\t' || byte == '\n' || byte == '\r';
}

// Surrogates and the two last code points of the basic plane are no characters.
bool isAllowedCodePoint(unsigned code) noexcept
{
    return code < 0xd800 || (code >= 0xe000 && code < 0xfffe) ||
           (code >= 0x10000 && code < 0x110000);
}

constexpr std::size_t blockSize = 8;

// The high bit of each byte that is 0.
std::uint64_t zeroBytes(std::uint64_t bytes) noexcept
{
    constexpr std::uint64_t lowBits = 0x7f7f7f7f7f7f7f7fu;
    return ~(((bytes & lowBits) + lowBits) | bytes | lowBits);
}

// Whether the next eight bytes are ASCII without control characters other than line ends, found in
// one go.
bool isPlainBlock(const char* text) noexcept
{
    std::uint64_t bytes;
    std::memcpy(&bytes, text, blockSize);
    const std::uint64_t nonAscii = bytes & 0x8080808080808080u;
    const std::uint64_t control = zeroBytes(bytes & 0xe0e0e0e0e0e0e0e0u);
    const std::uint64_t lineEnd = zeroBytes(bytes ^ 0x0a0a0a0a0a0a0a0au);
    return (nonAscii | (control & ~lineEnd)) == 0;
}

int hexDigit(char digit) noexcept
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return -1;
}

void appendEscape(std::string& text, unsigned char byte)
{
    constexpr char digits[] = "0123456789abcdef";
    text += "\\x";
    text += digits[byte >> 4];
    text += digits[byte & 15];
}

} // namespace

std::size_t characterLength(StringRef text) noexcept
{
    const unsigned char first = byteAt(text, 0);
    if (first < 0x80)
        return isAllowedAscii(first) ? 1 : 0;
    const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    if (first < 0xc2 || first > 0xf4 || text.size() < length)
        return 0;
    unsigned code = first & (0x7fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(text, i) & 0xc0) != 0x80)
            return 0;
        code = code << 6 | (byteAt(text, i) & 0x3f);
    }
    constexpr unsigned smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= smallest[length] && isAllowedCodePoint(code) ? length : 0;
}

bool isValid(StringRef text) noexcept
{
    for (std::size_t i = 0; i < text.size();) {
        if (text.size() - i >= blockSize && isPlainBlock(text.data() + i)) {
            i += blockSize;
            continue;
        }
        const std::size_t length = characterLength(text.substr(i));
        if (length == 0)
            return false;
        i += length;
    }
    return true;
}

bool survives(StringRef text) noexcept
{
    if (text.empty())
        return true;
    return text.find_first_not_of(whiteSpace) != StringRef::npos &&
           text.find('\r') == StringRef::npos && isValid(text);
}

std::string escaped(StringRef text, StringRef fragile)
{
    std::string result;
    result.reserve(text.size() + text.size() / 8);
    // One escape keeps a text of white space from being taken for indentation.
    bool escapeNext = text.find_first_not_of(whiteSpace) == StringRef::npos;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = characterLength(text.substr(i));
        if (length == 0 || escapeNext || fragile.find(text[i]) != StringRef::npos) {
            appendEscape(result, byteAt(text, i));
            escapeNext = false;
            ++i;
            continue;
        }
        if (text[i] == '\\')
            result += '\\';
        result += text.substr(i, length);
        i += length;
    }
    return result;
}

std::string unescaped(StringRef text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const StringRef rest = text.substr(i, 4);
        const int high = rest.size() == 4 ? hexDigit(rest[2]) : -1;
        const int low = rest.size() == 4 ? hexDigit(rest[3]) : -1;
        if (rest.substr(0, 2) == "\\\\") {
            result += '\\';
            i += 1;
        } else if (rest.substr(0, 2) == "\\x" && high >= 0 && low >= 0) {
            result += char(high << 4 | low);
            i += 3;
        } else {
            result += text[i];
        }
    }
    return result;
}

bool isPlainName(StringRef tag) noexcept
{
    const auto isLetter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    };
    const auto isNamePart = [isLetter](char c) {
        return isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
    };
    // Names that begin with "xml" are set aside by the standard.
    const bool reserved = tag.size() >= 3 && (tag[0] | 0x20) == 'x' && (tag[1] | 0x20) == 'm' &&
                          (tag[2] | 0x20) == 'l';
    return !tag.empty() && isLetter(tag[0]) && !reserved &&
           std::all_of(tag.begin(), tag.end(), isNamePart);
}

} // namespace Zar::xml
