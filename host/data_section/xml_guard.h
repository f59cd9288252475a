#pragma once

#include <host/core/string_ref.h>

namespace Zar::xml {

/// Looks over a document of unknown origin before it is parsed: whether it is valid UTF-8 and one
/// root element without a document type or undefined entities, and whether the tree would stay
/// within 256 levels and 2 GB. What remains for the parser is the grammar of tags.
/// One pass, no allocation, no recursion.
bool isFitForParsing(StringRef document) noexcept;

} // namespace Zar::xml
