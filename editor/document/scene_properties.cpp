#include "scene_properties.h"

#include "scene_object.h"

#include <algorithm>

namespace editor {

const SceneProperties& SceneProperties::all()
{
    static const SceneProperties properties;
    return properties;
}

SceneProperties::SceneProperties()
{
    // Which components there are depends on the kind, so there is one object of each to look at.
    for (const ObjectKind kind :
         {ObjectKind::Group, ObjectKind::Mesh, ObjectKind::Light, ObjectKind::Camera})
        addObject(*SceneObject::create(kind, {}), {});
}

void SceneProperties::addObject(kyr::IReflected& object, const Steps& steps)
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

void SceneProperties::addProperty(const kyr::IReflected& holder, const Steps& steps)
{
    const lumo::Variant value = steps.back()->get(holder);
    const SceneProperty property(steps, value);
    if (find(property.path()))
        return;
    add(property);
    for (int i = 0; i < componentsOf(value).count; ++i)
        add(property.component(i));
}

void SceneProperties::add(SceneProperty property)
{
    property.m_role = firstRole + int(m_list.size());
    m_list.push_back(std::move(property));
}

const SceneProperty* SceneProperties::find(int role) const noexcept
{
    const bool isKnown = role >= firstRole && role < firstRole + int(m_list.size());
    return isKnown ? &m_list[std::size_t(role - firstRole)] : nullptr;
}

const SceneProperty* SceneProperties::find(const std::string& path) const noexcept
{
    const auto found =
        std::find_if(m_list.begin(), m_list.end(),
                     [&path](const SceneProperty& property) { return property.path() == path; });
    return found != m_list.end() ? &*found : nullptr;
}

QVector<int> SceneProperties::changedBy(ChangeAspects aspects) const
{
    QVector<int> roles;
    for (const SceneProperty& property : m_list) {
        if (aspects.testFlag(property.changes()) && !property.isName())
            roles << property.role();
    }
    return roles;
}

} // namespace editor
