#include "x11_clipboard.h"

namespace Zar::platform {

class X11Clipboard::Connection
{};

X11Clipboard::~X11Clipboard() = default;

std::unique_ptr<X11Clipboard> X11Clipboard::connect(const char*)
{
    return nullptr;
}

bool X11Clipboard::offersText()
{
    return false;
}

std::optional<std::string> X11Clipboard::text()
{
    return std::nullopt;
}

} // namespace Zar::platform
