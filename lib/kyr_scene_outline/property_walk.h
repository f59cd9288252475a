#pragma once

#include <host/core/flags.h>
#include <host/reflection/reflected_object.h>

#include <cstddef>
#include <string>

namespace kyr::properties {

/// "name", or "prefix.name" below a nested object.
std::string propertyPath(const std::string& prefix, const BoundProperty& property);

/// Whether the property's scene item annotation keeps it out of copy and paste.
/// Throws `lumo::VariantCastError` when the annotation is no scene item.
bool isSceneItemProperty(const BoundProperty& property);

/// A value that shows somewhere; copy and paste leave everything else alone.
inline bool isVisibleValue(const BoundProperty& property)
{
    constexpr unsigned shown = 0x3;
    return property.isValue() && (property.visibility().bits() & shown) != 0;
}

/// Calls `leaf(property, path)` for each property of the object and of the objects nested in it
/// that holds no nested object itself, in order. Scene item properties are left out with all that
/// is below them; a property that holds a nested object is entered whatever its own flags.
template <typename Leaf>
void walkProperties(const ReflectedObject& object, const std::string& prefix, Leaf& leaf)
{
    const std::size_t count = object.propertyCount();
    for (std::size_t i = 0; i < count; ++i) {
        const BoundProperty property = object.propertyAt(i);
        if (!property.isValid() || isSceneItemProperty(property))
            continue;
        const std::string path = propertyPath(prefix, property);
        if (const ReflectedObject nested(property); nested.isValid())
            walkProperties(nested, path, leaf);
        else
            leaf(property, path);
    }
}

} // namespace kyr::properties
