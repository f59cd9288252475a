#include "variant.h"

#include "variant_converter.h"

namespace lumo {

VariantCastError::VariantCastError(const char* actual, const char* expected)
    : std::runtime_error(std::string("cannot read a value of type ") + actual + " as " + expected)
{}

Variant Variant::defaultOf(const MetaType& type)
{
    Variant variant;
    variant.m_payload = type.constructDefault(variant.m_storage);
    return variant;
}

Variant::Variant(const Variant& other)
    : m_payload(other.m_payload ? other.m_payload->cloneTo(m_storage) : nullptr)
{}

Variant::Variant(Variant&& other) noexcept
    : m_payload(other.m_payload ? other.m_payload->moveTo(m_storage) : nullptr)
{
    other.reset();
}

Variant& Variant::operator=(const Variant& other)
{
    if (m_payload && other.m_payload && m_payload->type() == other.m_payload->type())
        other.m_payload->copyValueTo(*m_payload);
    else
        *this = Variant(other);
    return *this;
}

Variant& Variant::operator=(Variant&& other) noexcept
{
    if (this != &other) {
        reset();
        if (other.m_payload)
            m_payload = other.m_payload->moveTo(m_storage);
        other.reset();
    }
    return *this;
}

void Variant::reset() noexcept
{
    if (MetaType::PayloadBase* payload = std::exchange(m_payload, nullptr))
        payload->~PayloadBase();
}

const MetaType& Variant::type() const noexcept
{
    return m_payload ? m_payload->metaType() : metaTypeOf<void>();
}

bool Variant::convertTo(Variant& target) const
{
    return VariantConverter::convert(target, *this);
}

void Variant::castError(const char* actual, const char* expected)
{
    throw VariantCastError(actual, expected);
}

bool operator==(const Variant& a, const Variant& b)
{
    if (a.isVoid() || b.isVoid())
        return a.isVoid() && b.isVoid();
    return a.m_payload->type() == b.m_payload->type() && a.m_payload->equals(*b.m_payload);
}

} // namespace lumo
