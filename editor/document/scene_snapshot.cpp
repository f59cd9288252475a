#include "scene_snapshot.h"

namespace editor {

namespace {

constexpr int objectsPerLook = 64;

} // namespace

SceneSnapshot::SceneSnapshot(const SceneObject& root) : m_copy(copyOf(root))
{
    m_pairs.push_back({&root, m_copy.get()});
}

SceneSnapshot::SceneSnapshot(SceneObjectPtr tree, std::vector<Branch> branches)
    : m_copy(std::move(tree)), m_branches(std::move(branches))
{}

bool SceneSnapshot::advance(std::chrono::nanoseconds time)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + time;
    for (int done = 1; m_nextBranch < m_branches.size() || m_next < m_pairs.size(); ++done) {
        if (m_nextBranch < m_branches.size()) {
            const Branch& branch = m_branches[m_nextBranch++];
            copy(*branch.original, *branch.parent);
        } else {
            const Pair parent = m_pairs[m_next];
            const auto& children = parent.original->children();
            if (m_nextChild < children.size()) {
                copy(*children[m_nextChild++], *parent.copy);
            } else {
                ++m_next;
                m_nextChild = 0;
            }
        }
        if (done % objectsPerLook == 0 && Clock::now() >= end)
            return true;
    }
    resolveReferences();
    return false;
}

double SceneSnapshot::progress() const
{
    const std::size_t all = m_pairs.size() + m_branches.size() - m_nextBranch;
    return all > 0 ? double(m_next) / double(all) : 1;
}

void SceneSnapshot::copy(const SceneObject& original, SceneObject& parent)
{
    const SceneObjectPtr copy = copyOf(original);
    parent.append(copy);
    m_pairs.push_back({&original, copy.get()});
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
