#include "property_roles.h"

#include <editor/document/display_color.h>
#include <editor/document/property_annotations.h>
#include <editor/document/scene_object.h>
#include <host/reflection/persistent_object.h>
#include <host/variant/number_text.h>
#include <host/variant/variant_converter.h>

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

using Steps = std::vector<const kyr::MetaProperty*>;

constexpr const char* componentNames[] = {"x", "y", "z", "w"};

std::string pathOf(const Steps& steps)
{
    std::string path;
    for (const kyr::MetaProperty* step : steps)
        path += (path.empty() ? "" : ".") + step->name;
    return path;
}

QString labelOf(const kyr::MetaProperty& property)
{
    const Label* label = annotation<Label>(property);
    return QString::fromStdString(label ? label->text : property.name);
}

int componentCount(const lumo::Variant& value)
{
    if (value.holds<lumo::Vector2>())
        return 2;
    if (value.holds<lumo::Vector3>())
        return 3;
    return value.holds<lumo::Vector4>() ? 4 : 0;
}

float componentOf(const lumo::Variant& value, int component)
{
    const auto at = static_cast<std::size_t>(component);
    if (const auto* vector = value.tryGet<lumo::Vector2>())
        return lumo::components(*vector)[at];
    if (const auto* vector = value.tryGet<lumo::Vector3>())
        return lumo::components(*vector)[at];
    return lumo::components(*value.tryGet<lumo::Vector4>())[at];
}

lumo::Variant withComponent(const lumo::Variant& value, int component, float number)
{
    const auto set = [component, number](auto vector) {
        auto numbers = lumo::components(vector);
        numbers[static_cast<std::size_t>(component)] = number;
        return numbers;
    };
    if (const auto* vector = value.tryGet<lumo::Vector2>()) {
        const auto v = set(*vector);
        return lumo::Variant(lumo::Vector2{v[0], v[1]});
    }
    if (const auto* vector = value.tryGet<lumo::Vector3>()) {
        const auto v = set(*vector);
        return lumo::Variant(lumo::Vector3{v[0], v[1], v[2]});
    }
    const auto v = set(*value.tryGet<lumo::Vector4>());
    return lumo::Variant(lumo::Vector4{v[0], v[1], v[2], v[3]});
}

bool isNumber(const lumo::Variant& value)
{
    return value.holds<float>() || value.holds<double>() || value.holds<int>() ||
           value.holds<unsigned>() || value.holds<long long>();
}

PropertyRole::Form formOf(const kyr::MetaProperty& property, const lumo::Variant& value)
{
    if (value.holds<bool>() && !property.isReadOnly && !property.isConst)
        return PropertyRole::Form::Toggle;
    if (value.holds<lumo::Color>())
        return PropertyRole::Form::Color;
    if (componentCount(value) > 0)
        return PropertyRole::Form::Vector;
    return isNumber(value) ? PropertyRole::Form::Number : PropertyRole::Form::Text;
}

/// What a person would write for it: 0.1 rather than 0.10000000149.
double shownNumber(float number)
{
    double shown = static_cast<double>(number);
    lumo::numberFromText(lumo::textOfNumber(number), shown);
    return shown;
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
    if (const auto* reference = value.tryGet<kyr::PersistentObject>()) {
        const kyr::ReflectedObject target = reference->object();
        return target.isValid() ? QString::fromStdString(target.get()->reflectedName()) : QString();
    }
    std::string text;
    lumo::VariantConverter::toText(value, text);
    return QString::fromStdString(text);
}

} // namespace

kyr::IReflected* PropertyRole::holderIn(SceneObject& object) const
{
    kyr::IReflected* holder = &object;
    for (auto step = m_steps.begin(); holder && step != m_steps.end() - 1; ++step)
        holder = (*step)->nested(*holder);
    return holder;
}

QVariant PropertyRole::value(SceneObject& object) const
{
    const kyr::IReflected* holder = holderIn(object);
    if (!holder)
        return {};
    const lumo::Variant value = m_steps.back()->get(*holder);
    return m_component < 0 ? shownValue(value) : shownNumber(componentOf(value, m_component));
}

double PropertyRole::bounded(double number) const
{
    const auto found = m_steps.back()->annotations.find(lumo::metaTypeOf<Range>().name());
    const Range* range = found.isValid() ? found.get()->tryGet<Range>() : nullptr;
    return range ? std::clamp(number, range->minimum, range->maximum) : number;
}

std::optional<lumo::Variant> PropertyRole::edited(SceneObject& object, const QVariant& value) const
{
    const kyr::IReflected* holder = m_isEditable ? holderIn(object) : nullptr;
    if (!holder)
        return std::nullopt;
    lumo::Variant edited = m_steps.back()->get(*holder);
    const QString text = value.toString().trimmed();
    if (m_form == Form::Toggle)
        return value.canConvert<bool>() ? std::optional(lumo::Variant(value.toBool()))
                                        : std::nullopt;
    if (m_form == Form::Color) {
        const QColor color(text);
        return color.isValid() ? std::optional(lumo::Variant(linearColor(color))) : std::nullopt;
    }
    if (m_form != Form::Number) {
        const bool isValue =
            lumo::VariantConverter::convert(edited, lumo::Variant(text.toStdString()));
        return isValue ? std::optional(edited) : std::nullopt;
    }
    bool isNumber = false;
    const double typed = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(typed))
        return std::nullopt;
    const double number = bounded(typed);
    if (m_component >= 0)
        return withComponent(edited, m_component, static_cast<float>(number));
    const bool isWhole = !edited.holds<float>() && !edited.holds<double>();
    const std::string written =
        isWhole ? lumo::textOfNumber(std::llround(number)) : lumo::textOfNumber(number);
    return lumo::VariantConverter::convert(edited, lumo::Variant(written)) ? std::optional(edited)
                                                                           : std::nullopt;
}

const PropertyRoles& PropertyRoles::all()
{
    static const PropertyRoles roles;
    return roles;
}

PropertyRoles::PropertyRoles()
{
    // Which components there are depends on the kind, so there is one object of each to look at.
    for (const ObjectKind kind :
         {ObjectKind::Group, ObjectKind::Mesh, ObjectKind::Light, ObjectKind::Camera})
        addObject(*SceneObject::create(kind, {}), {});
}

void PropertyRoles::addObject(kyr::IReflected& object, const Steps& steps)
{
    for (const kyr::MetaProperty& property : object.reflectedClass().properties) {
        if (!property.visibility.has(kyr::meta_property::VisibilityFlag::Inspector))
            continue;
        Steps next = steps;
        next.push_back(&property);
        if (property.isValue)
            addProperty(object, next);
        else if (kyr::IReflected* nested = property.nested(object))
            addObject(*nested, next);
    }
}

void PropertyRoles::addProperty(const kyr::IReflected& holder, const Steps& steps)
{
    const kyr::MetaProperty& property = *steps.back();
    PropertyRole role;
    role.m_path = pathOf(steps);
    if (role.m_path == "name" || contains(role.m_path))
        return;
    const lumo::Variant value = property.get(holder);
    if (steps.size() > 1)
        role.m_group = labelOf(*steps[steps.size() - 2]);
    role.m_title = labelOf(property);
    role.m_form = formOf(property, value);
    role.m_steps = steps;
    role.m_aspect = changedAspect(property);
    role.m_propertyPath = role.m_path;
    role.m_isEditable = !property.isReadOnly && !property.isConst &&
                        lumo::VariantConverter::hasTextForm(value.type());
    for (const std::string& choice : lumo::VariantConverter::enumerationNames(value.type()))
        role.m_choices.append(QString::fromStdString(choice));
    add(role);
    for (int i = 0; i < componentCount(value); ++i) {
        PropertyRole component = role;
        component.m_path += std::string(".") + componentNames[i];
        component.m_title += QLatin1Char(' ') + QString(QLatin1String(componentNames[i])).toUpper();
        component.m_form = PropertyRole::Form::Number;
        component.m_component = i;
        add(std::move(component));
    }
}

void PropertyRoles::add(PropertyRole role)
{
    role.m_role = firstRole + static_cast<int>(m_list.size());
    m_list.push_back(std::move(role));
}

bool PropertyRoles::contains(const std::string& path) const
{
    return std::any_of(m_list.begin(), m_list.end(),
                       [&path](const PropertyRole& role) { return role.m_path == path; });
}

const PropertyRole* PropertyRoles::find(int role) const noexcept
{
    const bool isKnown = role >= firstRole && role < firstRole + static_cast<int>(m_list.size());
    return isKnown ? &m_list[static_cast<std::size_t>(role - firstRole)] : nullptr;
}

QVector<int> PropertyRoles::changedBy(ChangeAspects aspects) const
{
    QVector<int> roles;
    for (const PropertyRole& role : m_list) {
        if (aspects.testFlag(role.m_aspect))
            roles << role.m_role;
    }
    return roles;
}

} // namespace editor
