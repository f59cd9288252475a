#pragma once

#include <editor/document/object_change.h>
#include <host/reflection/bound_property.h>

#include <string>

namespace editor {

/// How an inspector labels a property; without one it shows the property's name.
struct Label
{
    std::string text;
};

/// Unit of a number, such as "m" or "°".
struct Unit
{
    std::string text;
};

/// Sensible bounds of a number. Editors keep to them, the object accepts any value.
struct Range
{
    double minimum = 0;
    double maximum = 1;
    double step = 0.01;
};

/// What of the scene is another one when the property is; without one it is `Other`.
struct Changes
{
    ChangeAspect aspect;
};

/// The annotation of type `T` on `property`; null when there is none.
template <typename T>
const T* annotation(const kyr::MetaProperty& property)
{
    const auto found = property.annotations.find(lumo::metaTypeOf<T>().name());
    return found.isValid() ? found.get()->template tryGet<T>() : nullptr;
}
template <typename T>
const T* annotation(const kyr::BoundProperty& property)
{
    return annotation<T>(*property.metaProperty());
}

inline ChangeAspect changedAspect(const kyr::MetaProperty& property)
{
    const Changes* changes = annotation<Changes>(property);
    return changes ? changes->aspect : ChangeAspect::Other;
}

} // namespace editor
