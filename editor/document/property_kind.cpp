#include "property_kind.h"

#include "display_color.h"
#include <host/variant/number_text.h>
#include <host/variant/value_types.h>
#include <host/variant/variant_converter.h>

#include <algorithm>

namespace editor {

namespace {

template <typename Vector>
bool readComponents(const lumo::Variant& value, Components& components)
{
    const Vector* vector = value.tryGet<Vector>();
    if (!vector)
        return false;
    const auto numbers = lumo::components(*vector);
    std::copy(numbers.begin(), numbers.end(), components.values.begin());
    components.count = int(numbers.size());
    return true;
}

} // namespace

PropertyKind propertyKind(const lumo::Variant& value)
{
    if (value.holds<bool>())
        return PropertyKind::Boolean;
    if (value.holds<float>() || value.holds<double>())
        return PropertyKind::Number;
    if (value.holds<int>() || value.holds<unsigned>() || value.holds<long long>())
        return PropertyKind::Integer;
    if (value.holds<lumo::Color>())
        return PropertyKind::Color;
    if (componentsOf(value).count > 0)
        return PropertyKind::Vector;
    if (!lumo::VariantConverter::enumerationNames(value.type()).empty())
        return PropertyKind::Choice;
    return PropertyKind::Text;
}

Components componentsOf(const lumo::Variant& vector)
{
    Components components;
    readComponents<lumo::Vector2>(vector, components) ||
        readComponents<lumo::Vector3>(vector, components) ||
        readComponents<lumo::Vector4>(vector, components);
    return components;
}

lumo::Variant withComponent(const lumo::Variant& vector, int component, float number)
{
    Components parts = componentsOf(vector);
    if (component < 0 || component >= parts.count)
        return vector;
    parts.values[std::size_t(component)] = number;
    const auto& v = parts.values;
    switch (parts.count) {
    case 2:
        return lumo::Variant(lumo::Vector2{v[0], v[1]});
    case 3:
        return lumo::Variant(lumo::Vector3{v[0], v[1], v[2]});
    default:
        return lumo::Variant(lumo::Vector4{v[0], v[1], v[2], v[3]});
    }
}

QVariant shownValue(const lumo::Variant& value)
{
    if (const auto* flag = value.tryGet<bool>())
        return *flag;
    if (const auto* number = value.tryGet<float>())
        return shownNumber(*number);
    if (const auto* number = value.tryGet<double>())
        return *number;
    if (const auto* number = value.tryGet<int>())
        return *number;
    if (const auto* number = value.tryGet<unsigned>())
        return *number;
    if (const auto* number = value.tryGet<long long>())
        return *number;
    if (const auto* color = value.tryGet<lumo::Color>())
        return displayColor(*color);
    std::string text;
    lumo::VariantConverter::toText(value, text);
    return QString::fromStdString(text);
}

double shownNumber(float number)
{
    double shown = double(number);
    lumo::numberFromText(lumo::textOfNumber(number), shown);
    return shown;
}

} // namespace editor
