#pragma once

#include <host/variant/variant.h>

#include <QVariant>

#include <array>

namespace editor {

/// How a property is shown and edited.
enum class PropertyKind
{
    /// The heading of a nested object.
    Group,
    Boolean,
    Integer,
    Number,
    Text,
    /// One of several names.
    Choice,
    Color,
    Vector,
};

PropertyKind propertyKind(const lumo::Variant& value);

/// The components of a vector.
struct Components
{
    std::array<float, 4> values{};
    /// 0 for anything else.
    int count = 0;
};

Components componentsOf(const lumo::Variant& vector);
/// A vector of the same type with one component replaced.
lumo::Variant withComponent(const lumo::Variant& vector, int component, float number);

/// For a view: bool, int, double, QColor or QString, which is the text form of anything else.
QVariant shownValue(const lumo::Variant& value);

/// The number that a person would write for it: 0.1 rather than 0.10000000149.
double shownNumber(float number);

} // namespace editor
