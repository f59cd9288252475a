#include "property_text.h"

#include <host/variant/variant_converter.h>

namespace kyr::properties {
namespace {

// The value's own text or the one it converts to, which is then kept in `converted`.
const std::string* findText(const lumo::Variant& value, std::string& converted)
{
    if (const auto* text = value.tryGet<std::string>())
        return text;
    return lumo::VariantConverter::toText(value, converted) ? &converted : nullptr;
}

} // namespace

bool valueAsText(const lumo::Variant& value, std::string& text)
{
    std::string converted;
    const std::string* found = findText(value, converted);
    if (found)
        text = *found;
    return found != nullptr;
}

bool valueEqualsText(const lumo::Variant& value, const std::string& text)
{
    std::string converted;
    const std::string* found = findText(value, converted);
    return found && *found == text;
}

} // namespace kyr::properties
