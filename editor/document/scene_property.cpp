#include "scene_property.h"

#include "display_color.h"
#include "number_entry.h"
#include "property_annotations.h"
#include "scene_object.h"
#include <host/variant/number_text.h>
#include <host/variant/variant_converter.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace editor {

namespace {

constexpr const char* componentNames[] = {"x", "y", "z", "w"};

QString labelOf(const kyr::MetaProperty& property)
{
    const Label* label = annotation<Label>(property);
    return QString::fromStdString(label ? label->text : property.name);
}

} // namespace

SceneProperty::SceneProperty(Steps steps, const lumo::Variant& example)
    : m_title(labelOf(*steps.back())), m_kind(propertyKind(example)), m_steps(std::move(steps))
{
    for (const kyr::MetaProperty* step : m_steps)
        m_path += (m_path.empty() ? "" : ".") + step->name;
    m_propertyPath = m_path;
    if (m_steps.size() > 1)
        m_group = labelOf(*m_steps[m_steps.size() - 2]);
    const kyr::MetaProperty& property = *m_steps.back();
    if (const Unit* unit = annotation<Unit>(property))
        m_unit = QString::fromStdString(unit->text);
    const Range* range = annotation<Range>(property);
    m_minimum = range ? range->minimum : std::numeric_limits<double>::lowest();
    m_maximum = range ? range->maximum : std::numeric_limits<double>::max();
    m_step = range ? range->step : 1;
    m_aspect = changedAspect(property);
    m_isEditable = !isReadOnly() && lumo::VariantConverter::hasTextForm(example.type());
    for (const std::string& choice : lumo::VariantConverter::enumerationNames(example.type()))
        m_choices.append(QString::fromStdString(choice));
}

SceneProperty SceneProperty::component(int index) const
{
    SceneProperty component = *this;
    component.m_path += std::string(".") + componentNames[index];
    component.m_title += QLatin1Char(' ') + QString(QLatin1String(componentNames[index])).toUpper();
    component.m_kind = PropertyKind::Number;
    component.m_component = index;
    return component;
}

std::string SceneProperty::groupPath() const
{
    const std::size_t dot = m_propertyPath.rfind('.');
    return dot == std::string::npos ? std::string() : m_propertyPath.substr(0, dot);
}

bool SceneProperty::isReadOnly() const noexcept
{
    return m_steps.back()->isReadOnly || m_steps.back()->isConst;
}

kyr::IReflected* SceneProperty::holderIn(SceneObject& object) const
{
    kyr::IReflected* holder = &object;
    for (auto step = m_steps.begin(); holder && step != m_steps.end() - 1; ++step)
        holder = (*step)->nested(*holder);
    return holder;
}

std::optional<lumo::Variant> SceneProperty::valueIn(SceneObject& object) const
{
    const kyr::IReflected* holder = holderIn(object);
    return holder ? std::optional(m_steps.back()->get(*holder)) : std::nullopt;
}

QVariant SceneProperty::shownIn(SceneObject& object) const
{
    const std::optional<lumo::Variant> value = valueIn(object);
    if (!value)
        return {};
    return isComponent() ? QVariant(numberOf(*value, m_component)) : shownValue(*value);
}

std::optional<lumo::Variant> SceneProperty::edited(SceneObject& object, const QVariant& value) const
{
    const std::optional<lumo::Variant> present = m_isEditable ? valueIn(object) : std::nullopt;
    if (!present)
        return std::nullopt;
    const QString text = value.toString().trimmed();
    switch (m_kind) {
    case PropertyKind::Boolean:
        return value.canConvert<bool>() ? std::optional(lumo::Variant(value.toBool()))
                                        : std::nullopt;
    case PropertyKind::Color: {
        const QColor color(text);
        return color.isValid() ? std::optional(lumo::Variant(linearColor(color))) : std::nullopt;
    }
    case PropertyKind::Number:
    case PropertyKind::Integer: {
        const std::optional<NumberEntry> entry = NumberEntry::parse(text);
        const double number =
            entry ? entry->apply(numberOf(*present, m_component)) : std::nan("no number");
        if (!std::isfinite(number))
            return std::nullopt;
        return withNumber(*present, m_component, number);
    }
    case PropertyKind::Text:
    case PropertyKind::Choice:
    case PropertyKind::Vector:
    case PropertyKind::Group:
        break;
    }
    lumo::Variant edited = *present;
    const bool isValue = !(isName() && text.isEmpty()) &&
                         lumo::VariantConverter::convert(edited, lumo::Variant(text.toStdString()));
    return isValue ? std::optional(edited) : std::nullopt;
}

double SceneProperty::numberOf(const lumo::Variant& value, int component)
{
    return component >= 0 ? shownNumber(componentsOf(value).values[std::size_t(component)])
                          : shownValue(value).toDouble();
}

double SceneProperty::bounded(double number) const
{
    return std::clamp(number, m_minimum, m_maximum);
}

lumo::Variant SceneProperty::withNumber(const lumo::Variant& value, int component,
                                        double number) const
{
    const double kept = bounded(number);
    if (component >= 0)
        return withComponent(value, component, float(kept));
    lumo::Variant result = value;
    const bool isWhole = propertyKind(value) == PropertyKind::Integer;
    lumo::VariantConverter::convert(
        result,
        lumo::Variant(isWhole ? lumo::textOfNumber(std::llround(kept)) : lumo::textOfNumber(kept)));
    return result;
}

} // namespace editor
