#include "scene_snapshot.h"

namespace editor {

namespace {

constexpr int objectsPerLook = 64;

} // namespace

SceneSnapshot::SceneSnapshot(const SceneObject& root) : m_copy(copyOf(root))
{
    m_pairs.push_back({&root, m_copy.get()});
}

bool SceneSnapshot::advance(std::chrono::nanoseconds time)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + time;
    for (int done = 1; m_next < m_pairs.size(); ++done) {
        const Pair parent = m_pairs[m_next];
        const auto& children = parent.original->children();
        if (m_nextChild < children.size()) {
            const SceneObject& child = *children[m_nextChild++];
            const SceneObjectPtr copy = copyOf(child);
            parent.copy->append(copy);
            m_pairs.push_back({&child, copy.get()});
        } else {
            ++m_next;
            m_nextChild = 0;
        }
        if (done % objectsPerLook == 0 && Clock::now() >= end)
            return true;
    }
    resolveReferences();
    return false;
}

double SceneSnapshot::progress() const
{
    return double(m_next) / double(m_pairs.size());
}

SceneObjectPtr SceneSnapshot::copyOf(const SceneObject& original)
{
    SceneObjectPtr copy = original.copyValues();
    copy->setId(original.id());
    if (copy->camera()) {
        if (const SceneObject* target = sceneObjectOf(copy->camera()->target.object()))
            m_referring[target].push_back(copy.get());
        copy->camera()->target = {};
    }
    return copy;
}

void SceneSnapshot::resolveReferences()
{
    if (m_referring.empty())
        return;
    for (const auto& [original, copy] : m_pairs) {
        const auto found = m_referring.find(original);
        if (found == m_referring.end())
            continue;
        for (SceneObject* camera : found->second)
            camera->camera()->target = kyr::PersistentObject(copy->reflected());
    }
    m_referring.clear();
}

} // namespace editor
