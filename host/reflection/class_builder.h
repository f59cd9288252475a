#pragma once

#include <host/reflection/reflected.h>
#include <host/variant/variant_converter.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace kyr {

/// Describes the properties of the class `Owner`, in the order of the calls:
/// `ClassBuilder<Light>("Light").value("intensity", &Light::intensity).build()`.
/// The options that follow a property (`readOnly`, `annotate`, ...) belong to it.
template <typename Owner>
class ClassBuilder
{
public:
    explicit ClassBuilder(std::string name) { m_class.name = std::move(name); }

    /// A value kept in a member.
    template <typename Value>
    ClassBuilder& value(std::string name, Value Owner::*member)
    {
        return value<Value>(
            std::move(name), [member](const Owner& owner) { return owner.*member; },
            [member](Owner& owner, Value value) { owner.*member = std::move(value); });
    }

    /// A value behind a getter and a setter.
    template <typename Value, typename Getter, typename Setter>
    ClassBuilder& value(std::string name, Getter getter, Setter setter)
    {
        MetaProperty& property = computedValue<Value>(std::move(name), std::move(getter));
        property.set = [setter = std::move(setter)](IReflected& owner,
                                                    const lumo::Variant& source) {
            if (const Value* same = source.tryGet<Value>()) {
                setter(static_cast<Owner&>(owner), *same);
                return true;
            }
            lumo::Variant target{Value{}};
            if (!lumo::VariantConverter::convert(target, source))
                return false;
            setter(static_cast<Owner&>(owner), *target.tryGet<Value>());
            return true;
        };
        return *this;
    }

    /// A value that can only be read.
    template <typename Value, typename Getter>
    ClassBuilder& readOnlyValue(std::string name, Getter getter)
    {
        computedValue<Value>(std::move(name), std::move(getter)).isReadOnly = true;
        return *this;
    }

    /// A nested object: a member, or a pointer to one that may be null.
    template <typename Member>
    ClassBuilder& object(std::string name, Member Owner::*member)
    {
        MetaProperty& property = add(std::move(name), typeid(Member));
        property.nested = [member](IReflected& owner) -> IReflected* {
            auto& held = static_cast<Owner&>(owner).*member;
            if constexpr (std::is_base_of_v<IReflected, Member>)
                return &held;
            else
                return held ? std::addressof(*held) : nullptr;
        };
        return *this;
    }

    ClassBuilder& constant()
    {
        last().isConst = true;
        return *this;
    }
    ClassBuilder& visibility(vex::Flags<meta_property::VisibilityFlag> flags)
    {
        last().visibility = flags;
        return *this;
    }
    template <typename T>
    ClassBuilder& annotate(T annotation)
    {
        last().annotations.add(std::move(annotation));
        return *this;
    }

    ReflectedClass build() { return std::move(m_class); }

private:
    template <typename Value, typename Getter>
    MetaProperty& computedValue(std::string name, Getter getter)
    {
        MetaProperty& property = add(std::move(name), typeid(Value));
        property.isValue = true;
        property.get = [getter = std::move(getter)](const IReflected& owner) {
            return lumo::Variant(Value(getter(static_cast<const Owner&>(owner))));
        };
        return property;
    }

    MetaProperty& add(std::string name, const std::type_info& type)
    {
        MetaProperty& property = m_class.properties.emplace_back();
        property.name = std::move(name);
        property.type = &type;
        return property;
    }

    MetaProperty& last() { return m_class.properties.back(); }

    ReflectedClass m_class;
};

} // namespace kyr
