#include "isolation.h"

namespace editor {

void Isolation::start(const SceneObjects& tops)
{
    m_tops.clear();
    for (const SceneObjectPtr& object : tops)
        m_tops.push_back(object->id());
}

void Isolation::end()
{
    m_tops.clear();
    m_shown.clear();
}

void Isolation::update(const SceneDocument& document)
{
    m_shown.clear();
    std::vector<const SceneObject*> waiting;
    for (const quint32 id : m_tops) {
        if (const SceneObject* object = document.objectById(id))
            waiting.push_back(object);
    }
    while (!waiting.empty()) {
        const SceneObject* object = waiting.back();
        waiting.pop_back();
        if (!m_shown.insert(object->id()).second)
            continue;
        for (const SceneObjectPtr& child : object->children())
            waiting.push_back(child.get());
    }
}

void Isolation::apply(ViewportItem& item) const
{
    if (isActive() && m_shown.count(item.id) == 0)
        item.visible = false;
}

} // namespace editor
