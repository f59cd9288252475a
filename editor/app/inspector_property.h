#pragma once

#include "property_kind.h"

#include <host/reflection/reflected_object.h>

#include <QString>
#include <QStringList>

#include <vector>

namespace editor {

/// One line of an inspector: a property, or the heading of a nested object.
struct InspectorProperty
{
    /// Dotted, such as "light.intensity".
    std::string path;
    /// Path of the nested object that the property belongs to; empty at the top.
    std::string group;
    PropertyKind kind = PropertyKind::Text;
    bool isReadOnly = false;
    QString label;
    QString unit;
    /// The names of a `Choice`.
    QStringList choices;
    double minimum;
    double maximum;
    double step = 1;
};

/// The properties of an object that show in an inspector, nested objects behind their headings.
std::vector<InspectorProperty> inspectorProperties(const kyr::ReflectedObject& object);

/// Whether both are the same line of a view, whatever the object.
inline bool isSameLine(const InspectorProperty& a, const InspectorProperty& b)
{
    return a.path == b.path && a.kind == b.kind;
}

} // namespace editor
