#pragma once

#include <string_view>

namespace Zar {

/// Non-owning view of a text; the caller keeps the text alive.
template <typename Char>
using BasicStringRef = std::basic_string_view<Char>;

using StringRef = BasicStringRef<char>;

} // namespace Zar
