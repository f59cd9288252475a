#include "merged_value.h"

#include <editor/document/property_kind.h>

namespace editor {

namespace {

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
    if (componentsOf(m_first).count > 0)
        return displayComponents(m_first, m_mixed);
    return shownValue(m_first);
}

} // namespace editor
