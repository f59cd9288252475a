#include "merged_value.h"

#include "property_kind.h"

#include <editor/document/display_color.h>
#include <host/variant/variant_converter.h>

namespace editor {

namespace {

QString textOf(const lumo::Variant& value)
{
    std::string text;
    lumo::VariantConverter::toText(value, text);
    return QString::fromStdString(text);
}

QVariantList displayComponents(const lumo::Variant& vector, unsigned mixed)
{
    QVariantList list;
    const Components components = componentsOf(vector);
    for (int i = 0; i < components.count; ++i) {
        const bool isMixed = (mixed >> i) & 1u;
        list.append(isMixed ? QVariant::fromValue(nullptr)
                            : QVariant(shownNumber(components.values[std::size_t(i)])));
    }
    return list;
}

} // namespace

MergedValue::MergedValue(lumo::Variant first) : m_first(std::move(first))
{
    if (const int count = componentsOf(m_first).count)
        m_all = (1u << count) - 1;
}

bool MergedValue::merge(const lumo::Variant& value)
{
    if (value == m_first)
        return false;
    const unsigned before = m_mixed;
    const Components ours = componentsOf(m_first);
    const Components theirs = componentsOf(value);
    if (ours.count == 0 || ours.count != theirs.count)
        m_mixed = m_all;
    for (std::size_t i = 0; i < std::size_t(ours.count); ++i)
        m_mixed |= unsigned(ours.values[i] != theirs.values[i]) << i;
    return m_mixed != before;
}

QVariant MergedValue::display() const
{
    switch (propertyKind(m_first)) {
    case PropertyKind::Boolean:
        return *m_first.tryGet<bool>();
    case PropertyKind::Integer:
    case PropertyKind::Number:
        return textOf(m_first).toDouble();
    case PropertyKind::Color:
        return displayColor(*m_first.tryGet<lumo::Color>());
    case PropertyKind::Vector:
        return displayComponents(m_first, m_mixed);
    case PropertyKind::Group:
    case PropertyKind::Text:
    case PropertyKind::Choice:
        break;
    }
    return textOf(m_first);
}

} // namespace editor
