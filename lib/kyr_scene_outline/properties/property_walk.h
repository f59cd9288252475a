#pragma once

#include <host/core/flags.h>
#include <host/reflection/reflected_object.h>

#include <cstddef>
#include <string>
#include <utility>

namespace kyr::properties {

/// "name", or "prefix.name" below a nested object.
std::string propertyPath(std::string prefix, const BoundProperty& property);

/// Whether the property's scene item annotation keeps it out of copy and paste.
/// Throws `lumo::VariantCastError` when the annotation is no scene item.
bool isSceneItemProperty(const BoundProperty& property);

/// A value that shows somewhere; copy and paste leave everything else alone.
inline bool isVisibleValue(const BoundProperty& property)
{
    constexpr unsigned shown = 0x3;
    return property.isValue() && (property.visibility().bits() & shown) != 0;
}

/// `walkProperties` with a path to work in, which is the prefix and is left as it was.
template <typename Leaf>
void walkPropertiesBelow(const ReflectedObject& object, std::string& path, Leaf& leaf)
{
    const std::size_t prefix = path.size();
    const std::size_t count = object.propertyCount();
    for (std::size_t i = 0; i < count; ++i) {
        const BoundProperty property = object.propertyAt(i);
        if (!property.isValid() || isSceneItemProperty(property))
            continue;
        path = propertyPath(std::move(path), property);
        if (const ReflectedObject nested(property); nested.isValid())
            walkPropertiesBelow(nested, path, leaf);
        else
            leaf(property, std::as_const(path));
        path.resize(prefix);
    }
}

/// Calls `leaf(property, path)` for each property of the object and of the objects nested in it
/// that holds no nested object itself, in order. Scene item properties are left out with all that
/// is below them; a property that holds a nested object is entered whatever its own flags.
template <typename Leaf>
void walkProperties(const ReflectedObject& object, std::string prefix, Leaf& leaf)
{
    walkPropertiesBelow(object, prefix, leaf);
}

} // namespace kyr::properties
