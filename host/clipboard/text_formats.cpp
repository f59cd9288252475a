#include "text_formats.h"

#include <algorithm>
#include <cctype>

namespace Zar::platform {
namespace {

// "Text/Plain; charset="UTF-8"" is "text/plain;charset=utf-8".
std::string plain(const std::string& format)
{
    std::string text;
    for (const char c : format) {
        if (c != ' ' && c != '"')
            text += char(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

} // namespace

std::optional<std::size_t> bestTextFormat(const std::vector<std::string>& formats)
{
    for (const char* wanted : {"text/plain;charset=utf-8", "utf8_string", "text/plain", "string"}) {
        const auto found =
            std::find_if(formats.begin(), formats.end(),
                         [wanted](const std::string& format) { return plain(format) == wanted; });
        if (found != formats.end())
            return std::size_t(found - formats.begin());
    }
    return std::nullopt;
}

} // namespace Zar::platform
