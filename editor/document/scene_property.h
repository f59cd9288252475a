#pragma once

#include <editor/document/object_change.h>
#include <editor/document/property_kind.h>
#include <host/reflection/meta_property.h>

#include <QStringList>
#include <QVariant>

#include <optional>
#include <string>
#include <vector>

namespace editor {

class SceneObject;

/// One reflected value of scene objects, or one component of a vector: what it is called, how it
/// shows, and what becomes of it when a user types something. Inspector, columns and the list of
/// what can be pasted all go by it.
class SceneProperty
{
public:
    /// Of the rows of the scene's model.
    int role() const noexcept { return m_role; }
    /// Dotted; the components of a vector are "x" to "w", as in "transform.position.x".
    const std::string& path() const noexcept { return m_path; }
    /// The property that holds the component, or is the value itself.
    const std::string& propertyPath() const noexcept { return m_propertyPath; }
    /// Path of the nested object that holds the property; empty at the top.
    std::string groupPath() const;
    bool isComponent() const noexcept { return m_component >= 0; }
    /// What the tree shows in its first column.
    bool isName() const noexcept { return m_path == "name"; }

    /// Label of the nested object that holds the property; empty at the top.
    const QString& group() const noexcept { return m_group; }
    const QString& title() const noexcept { return m_title; }
    PropertyKind kind() const noexcept { return m_kind; }
    /// Of a number, such as "m"; may be empty.
    const QString& unit() const noexcept { return m_unit; }
    /// The names of a `Choice`; empty for anything else.
    const QStringList& choices() const noexcept { return m_choices; }
    double minimum() const noexcept { return m_minimum; }
    double maximum() const noexcept { return m_maximum; }
    double step() const noexcept { return m_step; }
    /// Can only be looked at.
    bool isReadOnly() const noexcept;
    bool isEditable() const noexcept { return m_isEditable; }
    /// What of the scene is another one when the property is.
    ChangeAspect changes() const noexcept { return m_aspect; }

    /// Of the whole property; nothing for an object without it.
    std::optional<lumo::Variant> valueIn(SceneObject& object) const;
    /// As `shownValue`; invalid for an object without the property.
    QVariant shownIn(SceneObject& object) const;
    /// What the whole property becomes in an object with that value, a bool or what a user typed:
    /// numbers as of `NumberEntry`. Nothing if it is no value, or the object has no such property.
    std::optional<lumo::Variant> edited(SceneObject& object, const QVariant& value) const;

    /// The number of a whole value, or of one component of a vector (-1 for none).
    static double numberOf(const lumo::Variant& value, int component);
    /// Within the bounds that the property is annotated with.
    double bounded(double number) const;
    /// The whole value with that number in place.
    lumo::Variant withNumber(const lumo::Variant& value, int component, double number) const;

private:
    friend class SceneProperties;
    using Steps = std::vector<const kyr::MetaProperty*>;

    /// From the scene object to the property; descriptions of classes are never destroyed.
    SceneProperty(Steps steps, const lumo::Variant& example);
    SceneProperty component(int index) const;

    /// What holds the property itself; null in an object without it.
    kyr::IReflected* holderIn(SceneObject& object) const;

    int m_role = 0;
    std::string m_path;
    std::string m_propertyPath;
    QString m_group;
    QString m_title;
    PropertyKind m_kind = PropertyKind::Text;
    QString m_unit;
    QStringList m_choices;
    double m_minimum = 0;
    double m_maximum = 0;
    double m_step = 1;
    bool m_isEditable = false;
    ChangeAspect m_aspect = ChangeAspect::Other;
    int m_component = -1;
    Steps m_steps;
};

} // namespace editor
