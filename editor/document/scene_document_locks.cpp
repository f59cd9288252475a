// What a lock keeps from changing, and how the user is told.

#include "scene_document.h"

#include <algorithm>

namespace editor {

void SceneDocument::refuse(const SceneObject& object)
{
    m_refused.insert(object.id());
    if (!m_tellsOnlyWholeSteps)
        m_refusalTimer.start();
}

bool SceneDocument::refuses(const SceneObject& object)
{
    if (object.isProtected())
        refuse(object);
    return object.isProtected();
}

SceneObjects SceneDocument::unlocked(SceneObjects objects)
{
    objects.erase(std::remove_if(objects.begin(), objects.end(),
                                 [this](const SceneObjectPtr& object) { return refuses(*object); }),
                  objects.end());
    return objects;
}

bool SceneDocument::allowsChange(const SceneObject& object, const kyr::BoundProperty& property)
{
    const bool isLock = property.object() == &object && property.metaProperty()->name == "locked";
    return (isLock && m_setsLocks) || m_controller->isReplaying() || !refuses(object);
}

QString SceneDocument::takeRefusal()
{
    m_refusalTimer.stop();
    const std::unordered_set<quint32> refused = std::exchange(m_refused, {});
    if (refused.size() > 1)
        return tr("%1 objects are locked").arg(refused.size());
    const SceneObject* object = refused.empty() ? nullptr : objectById(*refused.begin());
    if (!object)
        return {};
    const SceneObject* holder = object;
    while (!holder->isLocked() && holder->parent())
        holder = holder->parent();
    return holder == object
               ? tr("“%1” is locked").arg(object->displayName())
               : tr("“%1” is locked with “%2”").arg(object->displayName(), holder->displayName());
}

void SceneDocument::tellRefusal()
{
    const QString reason = takeRefusal();
    if (!reason.isEmpty())
        Q_EMIT refused(reason);
}

} // namespace editor
