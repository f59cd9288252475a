#pragma once

#include <host/core/flags.h>
#include <host/reflection/annotations.h>

#include <functional>
#include <string>
#include <typeinfo>

namespace kyr {

class IReflected;

/// How a property is set.
enum class SetterFlag : unsigned
{
    /// The change restores an earlier state and must not be recorded for undo.
    Replay = 1u << 0,
};

namespace meta_property {

/// Where a property shows.
enum class VisibilityFlag : unsigned
{
    Inspector = 1u << 0,
    Scripts = 1u << 1,
    Advanced = 1u << 2,
};

} // namespace meta_property

/// Static description of one property of a class; owned by its `ReflectedClass`.
struct MetaProperty
{
    std::string name;
    const std::type_info* type = &typeid(void);
    vex::Flags<meta_property::VisibilityFlag> visibility = meta_property::VisibilityFlag::Inspector;
    bool isValue = false;
    bool isConst = false;
    bool isReadOnly = false;
    Annotations annotations;
    /// Value properties: reads the value, a void variant when the state is undefined.
    std::function<lumo::Variant(const IReflected&)> get;
    /// Writable value properties: false leaves the object as it was.
    std::function<bool(IReflected&, const lumo::Variant&)> set;
    /// Properties that hold a nested object: null when there is none.
    std::function<IReflected*(IReflected&)> nested;
};

} // namespace kyr
