#pragma once

#include <editor/document/scene_property.h>

#include <QVector>

namespace editor {

/// The properties of all kinds of scene objects, numbered as roles of the scene's model.
class SceneProperties
{
public:
    static constexpr int firstRole = Qt::UserRole + 1000;

    static const SceneProperties& all();

    /// In the order of their roles; those of one group follow each other.
    const std::vector<SceneProperty>& list() const noexcept { return m_list; }
    /// Null for a role that is no property's.
    const SceneProperty* find(int role) const noexcept;
    const SceneProperty* find(const std::string& path) const noexcept;
    /// The roles whose values may be other ones after such a change.
    QVector<int> changedBy(ChangeAspects aspects) const;

private:
    using Steps = SceneProperty::Steps;

    SceneProperties();
    void addObject(kyr::IReflected& object, const Steps& steps);
    void addProperty(const kyr::IReflected& holder, const Steps& steps);
    void add(SceneProperty property);

    std::vector<SceneProperty> m_list;
};

} // namespace editor
