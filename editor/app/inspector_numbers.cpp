// Numbers in the inspector: what is typed, stepped and dragged, relative to each object's own
// value.

#include "inspector_model.h"

#include <editor/document/number_entry.h>

#include <cmath>

namespace editor {

void InspectorModel::changeNumber(int row, int component,
                                  const std::function<double(const SceneObject&, double)>& change)
{
    const SceneProperty* property = propertyAt(row);
    if (!property)
        return;
    bool isBounded = false;
    edit(row, [&](const SceneObject& object, const lumo::Variant& present) {
        const double number = change(object, SceneProperty::numberOf(present, component));
        if (!std::isfinite(number))
            return std::optional(present);
        isBounded = isBounded || property->bounded(number) != number;
        return std::optional(property->withNumber(present, component, number));
    });
    if (isBounded) {
        Q_EMIT refused(tr("%1 is kept between %2 and %3")
                           .arg(property->title(),
                                QLocale::c().toString(property->minimum(), 'g', 9),
                                QLocale::c().toString(property->maximum(), 'g', 9)));
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
