#pragma once

#include <host/reflection/bound_property.h>
#include <host/reflection/reflected.h>

#include <QMetaType>

#include <cstddef>
#include <memory>
#include <typeinfo>

namespace kyr {

/// Handle of an object as the reflection sees it: a top-level object or one nested in it.
/// A handle keeps the top-level object alive. Default-constructed handles are invalid: they have
/// no properties and the type `void`.
class ReflectedObject
{
public:
    ReflectedObject() noexcept = default;
    explicit ReflectedObject(std::shared_ptr<IReflected> topLevel) noexcept
        : m_topLevel(std::move(topLevel)), m_object(m_topLevel.get())
    {}
    ReflectedObject(std::shared_ptr<IReflected> topLevel, IReflected* object) noexcept
        : m_topLevel(std::move(topLevel)), m_object(object)
    {}
    /// The object that `property` holds; invalid when it holds none.
    explicit ReflectedObject(const BoundProperty& property);

    bool isValid() const noexcept { return m_object != nullptr; }
    const std::type_info& type() const noexcept;

    std::size_t propertyCount() const noexcept;
    BoundProperty propertyAt(std::size_t index) const;
    /// Invalid when there is no property of that name. Linear in the properties of the class.
    BoundProperty property(Zar::StringRef name) const;
    /// What refers to this object: the property that holds it, or, for a top-level object, a
    /// stand-in that only has the object's name.
    BoundProperty reference() const;

    IReflected* get() const noexcept { return m_object; }
    const std::shared_ptr<IReflected>& topLevel() const noexcept { return m_topLevel; }

    friend bool operator==(const ReflectedObject& a, const ReflectedObject& b) noexcept
    {
        return a.m_object == b.m_object;
    }
    friend bool operator!=(const ReflectedObject& a, const ReflectedObject& b) noexcept
    {
        return a.m_object != b.m_object;
    }

private:
    std::shared_ptr<IReflected> m_topLevel;
    IReflected* m_object = nullptr;
    IReflected* m_holder = nullptr;
    const MetaProperty* m_reference = nullptr;
};

} // namespace kyr

Q_DECLARE_METATYPE(kyr::ReflectedObject)
