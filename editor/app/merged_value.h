#pragma once

#include <host/variant/variant.h>

#include <QVariant>

namespace editor {

/// The value that several objects have in common at one property.
class MergedValue
{
public:
    MergedValue() = default;
    explicit MergedValue(lumo::Variant first);

    /// Takes in another object's value; returns whether that made a difference.
    bool merge(const lumo::Variant& value);
    /// Whether objects differ in the value, or in each part of a vector.
    bool isFullyMixed() const noexcept { return m_mixed == m_all; }

    /// The first object's value as `shownValue` has it, or for vectors a list of numbers with null
    /// where objects differ.
    QVariant display() const;

private:
    lumo::Variant m_first;
    // A bit a component; values that are no vectors have one.
    unsigned m_mixed = 0;
    unsigned m_all = 1;
};

} // namespace editor
