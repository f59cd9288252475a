#include "inspector_property.h"

#include <editor/document/property_annotations.h>
#include <host/variant/variant_converter.h>

#include <limits>

namespace editor {

namespace {

InspectorProperty describe(const kyr::BoundProperty& property, const std::string& group)
{
    InspectorProperty line;
    line.path = group.empty() ? property.name() : group + "." + property.name();
    line.group = group;
    const Label* label = annotation<Label>(property);
    line.label = QString::fromStdString(label ? label->text : property.name());
    if (const Unit* unit = annotation<Unit>(property))
        line.unit = QString::fromStdString(unit->text);
    const Range* range = annotation<Range>(property);
    line.minimum = range ? range->minimum : std::numeric_limits<double>::lowest();
    line.maximum = range ? range->maximum : std::numeric_limits<double>::max();
    line.step = range ? range->step : 1;
    return line;
}

void describeValue(const kyr::BoundProperty& property, InspectorProperty& line)
{
    const lumo::Variant value = property.get();
    line.kind = propertyKind(value);
    line.isReadOnly = property.isReadOnly() || property.isConst() ||
                      !lumo::VariantConverter::hasTextForm(value.type());
    for (const std::string& name : lumo::VariantConverter::enumerationNames(value.type()))
        line.choices.append(QString::fromStdString(name));
}

void appendProperties(const kyr::ReflectedObject& object, const std::string& group,
                      std::vector<InspectorProperty>& lines)
{
    for (std::size_t i = 0; i < object.propertyCount(); ++i) {
        const kyr::BoundProperty property = object.propertyAt(i);
        if (!property.visibility().has(kyr::meta_property::VisibilityFlag::Inspector))
            continue;
        InspectorProperty line = describe(property, group);
        if (property.isValue()) {
            describeValue(property, line);
            lines.push_back(std::move(line));
            continue;
        }
        const kyr::ReflectedObject nested(property);
        if (!nested.isValid())
            continue;
        line.kind = PropertyKind::Group;
        const std::string path = line.path;
        lines.push_back(std::move(line));
        appendProperties(nested, path, lines);
    }
}

} // namespace

std::vector<InspectorProperty> inspectorProperties(const kyr::ReflectedObject& object)
{
    std::vector<InspectorProperty> lines;
    appendProperties(object, {}, lines);
    return lines;
}

} // namespace editor
