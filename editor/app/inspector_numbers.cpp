// Numbers in the inspector: what is typed, stepped and dragged, relative to each object's own
// value.

#include "inspector_model.h"

#include "number_entry.h"

#include <host/variant/number_text.h>
#include <host/variant/variant_converter.h>

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

double numberOf(const lumo::Variant& value, int component)
{
    if (component >= 0)
        return shownNumber(componentsOf(value).values[std::size_t(component)]);
    std::string text;
    lumo::VariantConverter::toText(value, text);
    return QString::fromStdString(text).toDouble();
}

lumo::Variant withNumber(const lumo::Variant& value, int component, double number, bool isInteger)
{
    if (component >= 0)
        return withComponent(value, component, float(number));
    return lumo::Variant(isInteger ? lumo::textOfNumber(std::llround(number))
                                   : lumo::textOfNumber(number));
}

} // namespace

void InspectorModel::changeNumber(int row, int component,
                                  const std::function<double(const SceneObject&, double)>& change)
{
    const InspectorProperty* property = propertyAt(row);
    if (!property)
        return;
    const double minimum = property->minimum;
    const double maximum = property->maximum;
    const bool isInteger = property->kind == PropertyKind::Integer;
    const QString label = property->label;
    bool isBounded = false;
    edit(row, [&](const SceneObject& object, const lumo::Variant& present) {
        const double number = change(object, numberOf(present, component));
        if (!std::isfinite(number))
            return present;
        const double bounded = std::clamp(number, minimum, maximum);
        isBounded = isBounded || bounded != number;
        return withNumber(present, component, bounded, isInteger);
    });
    if (isBounded) {
        Q_EMIT refused(tr("%1 is kept between %2 and %3")
                           .arg(label, QLocale::c().toString(minimum, 'g', 9),
                                QLocale::c().toString(maximum, 'g', 9)));
    }
}

bool InspectorModel::typeNumber(int row, int component, const QString& text)
{
    const std::optional<NumberEntry> entry = NumberEntry::parse(text);
    if (!entry) {
        Q_EMIT refused(tr("“%1” is no number").arg(text.trimmed()));
        return false;
    }
    changeNumber(row, component,
                 [&entry](const SceneObject&, double present) { return entry->apply(present); });
    return true;
}

void InspectorModel::stepNumber(int row, int component, double amount)
{
    const NumberEntry entry{NumberEntry::Operation::Add, amount};
    changeNumber(row, component,
                 [&entry](const SceneObject&, double present) { return entry.apply(present); });
}

void InspectorModel::dragNumber(int row, int component, double amount)
{
    const NumberEntry entry{NumberEntry::Operation::Add, amount};
    changeNumber(row, component, [this, &entry](const SceneObject& object, double present) {
        return entry.apply(m_dragStarts.try_emplace(&object, present).first->second);
    });
}

} // namespace editor
