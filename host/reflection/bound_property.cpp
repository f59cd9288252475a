#include "bound_property.h"

#include "reflected.h"
#include <host/core/debug_message.h>
#include <host/core/message_group.h>
#include <host/variant/variant_converter.h>

namespace kyr {
namespace {

void reportRefusal(const BoundProperty& property, const lumo::Variant& value,
                   const lumo::Variant& present)
{
    const Zar::DebugMessageHelper message(0, 4);
    const std::string name = property.name();
    const std::string owner = property.topLevel() ? property.topLevel()->reflectedName() : "";
    const std::string* text = value.tryGet<std::string>();
    const lumo::MetaType& type = present.type();
    if (!text || present.isVoid() || lumo::VariantConverter::hasTextForm(type)) {
        message.message("Cannot set property '%s' of '%s': '%s' is no value of its type",
                        name.c_str(), owner.c_str(),
                        text ? text->c_str() : value.type().name().c_str());
    } else if (Zar::MessageGroup::isFirst("no text form " + type.name())) {
        message.message("Cannot set property '%s' of '%s': values of type '%s' have no text form",
                        name.c_str(), owner.c_str(), type.name().c_str());
    }
}

} // namespace

BoundProperty::BoundProperty(std::shared_ptr<IReflected> topLevel, IReflected* object,
                             const MetaProperty* property) noexcept
    : m_topLevel(std::move(topLevel)), m_object(object), m_property(property)
{}

std::string BoundProperty::name() const
{
    if (m_property)
        return m_property->name;
    return m_object ? m_object->reflectedName() : std::string();
}

vex::Flags<meta_property::VisibilityFlag> BoundProperty::visibility() const noexcept
{
    return m_property ? m_property->visibility : vex::Flags<meta_property::VisibilityFlag>();
}

const Annotations& BoundProperty::annotations() const noexcept
{
    static const Annotations none;
    return m_property ? m_property->annotations : none;
}

const std::type_info& BoundProperty::propertyType() const noexcept
{
    return m_property ? *m_property->type : typeid(void);
}

lumo::Variant BoundProperty::get() const
{
    return isValid() && m_property->get ? m_property->get(*m_object) : lumo::Variant();
}

bool BoundProperty::set(const lumo::Variant& value, vex::Flags<SetterFlag> flags) const
{
    if (!isValid() || isConst() || isReadOnly() || !m_property->set)
        return false;
    if (m_topLevel && !flags.has(SetterFlag::Replay) && !m_topLevel->allowsChange(*this))
        return false;
    const lumo::Variant before = get();
    if (!m_property->set(*m_object, value)) {
        reportRefusal(*this, value, before);
        return false;
    }
    const lumo::Variant after = get();
    if (m_topLevel && !(before == after))
        m_topLevel->propertyChanged(*this, before, after, flags);
    return true;
}

} // namespace kyr
