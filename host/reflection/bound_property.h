#pragma once

#include <host/core/flags.h>
#include <host/reflection/meta_property.h>

#include <memory>
#include <string>
#include <typeinfo>

namespace kyr {

/// One property of one object. Keeps the top-level object alive.
class BoundProperty
{
public:
    BoundProperty() noexcept = default;
    BoundProperty(std::shared_ptr<IReflected> topLevel, IReflected* object,
                  const MetaProperty* property) noexcept;

    bool isValid() const noexcept { return m_object && m_property; }
    /// The stand-in of a top-level object has that object's name.
    std::string name() const;
    /// A value, as opposed to a nested object.
    bool isValue() const noexcept { return m_property && m_property->isValue; }
    bool isConst() const noexcept { return m_property && m_property->isConst; }
    bool isReadOnly() const noexcept { return m_property && m_property->isReadOnly; }
    vex::Flags<meta_property::VisibilityFlag> visibility() const noexcept;
    const Annotations& annotations() const noexcept;
    /// The declared type.
    const std::type_info& propertyType() const noexcept;

    lumo::Variant get() const;
    /// Converts `value` to the property's type and stores it; the top-level object is told when
    /// the value really changed. False, with nothing changed, for a value that does not convert,
    /// which is reported, and for an object that refuses. What the object throws when it is told
    /// passes through; the value is set by then.
    bool set(const lumo::Variant& value, vex::Flags<SetterFlag> flags = {}) const;

    const std::shared_ptr<IReflected>& topLevel() const noexcept { return m_topLevel; }
    IReflected* object() const noexcept { return m_object; }
    const MetaProperty* metaProperty() const noexcept { return m_property; }

private:
    std::shared_ptr<IReflected> m_topLevel;
    IReflected* m_object = nullptr;
    const MetaProperty* m_property = nullptr;
};

/// Lets a callable take a property, or its value converted to the type the callable asks for.
struct BoundPropertyArgument
{
    const BoundProperty& property;

    operator const BoundProperty&() const noexcept { return property; }
    template <typename Value, typename = std::enable_if_t<!std::is_same_v<Value, BoundProperty>>>
    operator Value() const
    {
        return property.get().template cast<Value>();
    }
};

/// Lets a callback that is handed a property take the property's value instead.
struct BoundPropertyArgumentConvertor
{
    static BoundPropertyArgument convert(const BoundProperty& property) noexcept
    {
        return {property};
    }
};

} // namespace kyr
