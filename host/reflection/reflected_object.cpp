#include "reflected_object.h"

namespace kyr {

ReflectedObject::ReflectedObject(const BoundProperty& property)
{
    if (!property.isValid() || !property.metaProperty()->nested)
        return;
    m_object = property.metaProperty()->nested(*property.object());
    if (!m_object)
        return;
    m_topLevel = property.topLevel();
    m_holder = property.object();
    m_reference = property.metaProperty();
}

const std::type_info& ReflectedObject::type() const noexcept
{
    if (!m_object)
        return typeid(void);
    const IReflected& object = *m_object;
    return typeid(object);
}

std::size_t ReflectedObject::propertyCount() const noexcept
{
    return m_object ? m_object->reflectedClass().properties.size() : 0;
}

BoundProperty ReflectedObject::propertyAt(std::size_t index) const
{
    if (index >= propertyCount())
        return {};
    return {m_topLevel, m_object, &m_object->reflectedClass().properties[index]};
}

BoundProperty ReflectedObject::property(Zar::StringRef name) const
{
    if (m_object) {
        for (const MetaProperty& property : m_object->reflectedClass().properties) {
            if (property.name == name)
                return {m_topLevel, m_object, &property};
        }
    }
    return {};
}

BoundProperty ReflectedObject::reference() const
{
    return m_reference ? BoundProperty(m_topLevel, m_holder, m_reference)
                       : BoundProperty(m_topLevel, m_object, nullptr);
}

} // namespace kyr
