#pragma once

#include <host/core/string_ref.h>

#include <string>

namespace Zar::xml {

/// At the front of a file; text anywhere else.
constexpr StringRef byteOrderMark = "\xef\xbb\xbf";

/// Length in bytes of the character that starts `text`; 0 when it is no valid UTF-8 or no character
/// that XML 1.0 allows (its section 2.2). `text` must not be empty.
std::size_t characterLength(StringRef text) noexcept;

/// Whether all of `text` is characters that XML 1.0 allows.
bool isValid(StringRef text) noexcept;

/// Whether XML readers give `text` back as it was written.
bool survives(StringRef text) noexcept;

/// `text` with a backslash before backslashes and "\xHH" for each byte that would not survive, and
/// for those in `fragile`: in an attribute also tabs and line ends are lost.
std::string escaped(StringRef text, StringRef fragile = "\r");

/// Undoes `escaped`. A backslash with anything else behind it stands for itself.
std::string unescaped(StringRef text);

/// Whether `tag` can be an element name: ASCII letters, digits, ".", "-" and "_".
bool isPlainName(StringRef tag) noexcept;

} // namespace Zar::xml
