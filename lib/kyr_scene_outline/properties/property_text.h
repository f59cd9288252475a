#pragma once

#include <host/variant/variant.h>

#include <string>

namespace kyr::properties {

/// The text form of a value in `text`; false, with `text` unchanged, when it has none.
bool valueAsText(const lumo::Variant& value, std::string& text);

/// Whether the value has a text form and it is `text`, byte for byte.
bool valueEqualsText(const lumo::Variant& value, const std::string& text);

} // namespace kyr::properties
