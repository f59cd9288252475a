#pragma once

#include <editor/document/scene_object.h>

#include <chrono>
#include <unordered_map>
#include <utility>
#include <vector>

namespace editor {

/// Makes a free copy of a scene, or of some branches, a bit at a time, for another thread to work
/// on. The copy has the identifiers of the original, and its references lead to its own objects.
class SceneSnapshot
{
public:
    /// A branch, and what its copy goes below.
    struct Branch
    {
        const SceneObject* original;
        SceneObject* parent;
    };

    /// The scene must stay as it is until the copy is complete or the snapshot is gone.
    explicit SceneSnapshot(const SceneObject& root);
    /// Puts copies of branches, of which none is inside another one, into a free tree.
    SceneSnapshot(SceneObjectPtr tree, std::vector<Branch> branches);

    /// Copies for about that long. False once the copy is complete.
    bool advance(std::chrono::nanoseconds time);
    /// From 0 to 1, as far as the objects are known by now.
    double progress() const;
    /// The complete copy, once.
    SceneObjectPtr takeCopy() noexcept { return std::exchange(m_copy, nullptr); }

private:
    struct Pair
    {
        const SceneObject* original;
        SceneObject* copy;
    };

    void copy(const SceneObject& original, SceneObject& parent);
    SceneObjectPtr copyOf(const SceneObject& original);
    void resolveReferences();

    SceneObjectPtr m_copy;
    std::vector<Branch> m_branches;
    std::size_t m_nextBranch = 0;
    /// Level by level; the children of those before `m_next` and the first of its own are copied.
    std::vector<Pair> m_pairs;
    std::size_t m_next = 0;
    std::size_t m_nextChild = 0;
    std::unordered_map<const SceneObject*, std::vector<SceneObject*>> m_referring;
};

} // namespace editor
