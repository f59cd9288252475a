#pragma once

#include <host/core/flags.h>
#include <host/reflection/meta_property.h>

#include <string>
#include <vector>

namespace kyr {

class BoundProperty;

/// The properties of one class, in their order.
struct ReflectedClass
{
    std::string name;
    std::vector<MetaProperty> properties;
};

/// Base of everything that carries reflected properties.
/// Top-level objects are owned by a `std::shared_ptr`; nested objects are members of theirs.
class IReflected
{
public:
    IReflected() = default;
    IReflected(const IReflected&) = default;
    IReflected& operator=(const IReflected&) = default;
    virtual ~IReflected() = default;

    virtual const ReflectedClass& reflectedClass() const = 0;

    /// What a user calls this object.
    virtual std::string reflectedName() const { return reflectedClass().name; }

    /// Asked of the top-level object before a property of it, or of an object nested in it, is set.
    /// False refuses; why is the object's to tell. An earlier state is restored without asking.
    virtual bool allowsChange(const BoundProperty& /*property*/) { return true; }

    /// Called on the top-level object after a property of it, or of an object nested in it, took
    /// another value.
    virtual void propertyChanged(const BoundProperty& /*property*/, const lumo::Variant& /*before*/,
                                 const lumo::Variant& /*after*/, vex::Flags<SetterFlag> /*flags*/)
    {}
};

} // namespace kyr
