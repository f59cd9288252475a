#pragma once

#include <editor/document/object_change.h>
#include <host/reflection/meta_property.h>

#include <QStringList>
#include <QVariant>
#include <QVector>

#include <optional>
#include <string>
#include <vector>

namespace editor {

class SceneObject;

/// One reflected value of scene objects, or one component of a vector, as a role of their rows.
class PropertyRole
{
public:
    enum class Form
    {
        Toggle, ///< A boolean that can be set.
        Number,
        Color,
        Vector, ///< A text of all components.
        Text,
    };

    int role() const noexcept { return m_role; }
    /// Dotted; the components of a vector are "x" to "w", as in "transform.position.x".
    const std::string& path() const noexcept { return m_path; }
    /// Label of the nested object that holds the property; empty at the top.
    const QString& group() const noexcept { return m_group; }
    const QString& title() const noexcept { return m_title; }
    Form form() const noexcept { return m_form; }
    /// Can only be looked at.
    bool isReadOnly() const noexcept
    {
        return m_steps.back()->isReadOnly || m_steps.back()->isConst;
    }

    bool isEditable() const noexcept { return m_isEditable; }
    /// The names of an enumeration; empty for anything else.
    const QStringList& choices() const noexcept { return m_choices; }
    /// The property that holds the component, or is the value itself.
    const std::string& propertyPath() const noexcept { return m_propertyPath; }

    /// bool, int, double, QColor or QString; invalid for an object without the property.
    QVariant value(SceneObject& object) const;
    /// What the property at `propertyPath` becomes with that value, a bool or a text that a user
    /// typed; nothing if the text is no value, or the object has no such property. Numbers keep to
    /// the bounds that the property is annotated with.
    std::optional<lumo::Variant> edited(SceneObject& object, const QVariant& value) const;

private:
    friend class PropertyRoles;

    /// What holds the property itself; null in an object without it.
    kyr::IReflected* holderIn(SceneObject& object) const;
    double bounded(double number) const;

    int m_role = 0;
    std::string m_path;
    QString m_group;
    QString m_title;
    Form m_form = Form::Text;
    bool m_isEditable = false;
    QStringList m_choices;
    std::string m_propertyPath;
    int m_component = -1;
    // From the scene object to the property; descriptions of classes are never destroyed.
    std::vector<const kyr::MetaProperty*> m_steps;
    ChangeAspect m_aspect = ChangeAspect::Other;
};

/// The properties of all kinds of scene objects, numbered as roles; names are left to
/// `Qt::DisplayRole`.
class PropertyRoles
{
public:
    static constexpr int firstRole = Qt::UserRole + 1000;

    static const PropertyRoles& all();

    /// In the order of their roles; those of one group follow each other.
    const std::vector<PropertyRole>& list() const noexcept { return m_list; }
    /// Null for a role that is no property's.
    const PropertyRole* find(int role) const noexcept;
    /// The roles whose values may be other ones after such a change.
    QVector<int> changedBy(ChangeAspects aspects) const;

private:
    using Steps = std::vector<const kyr::MetaProperty*>;

    PropertyRoles();
    void addObject(kyr::IReflected& object, const Steps& steps);
    void addProperty(const kyr::IReflected& holder, const Steps& steps);
    void add(PropertyRole role);
    bool contains(const std::string& path) const;

    std::vector<PropertyRole> m_list;
};

} // namespace editor
