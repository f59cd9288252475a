#pragma once

#include <editor/document/scene_object.h>

#include <chrono>
#include <unordered_map>
#include <vector>

namespace editor {

/// Makes a free copy of a scene a bit at a time, for another thread to work on. The copy has the
/// identifiers of the original, and its references lead to its own objects.
class SceneSnapshot
{
public:
    /// The scene must stay as it is until the copy is complete or the snapshot is gone.
    explicit SceneSnapshot(const SceneObject& root);

    /// Copies for about that long. False once the copy is complete.
    bool advance(std::chrono::nanoseconds time);
    /// From 0 to 1, as far as the objects are known by now.
    double progress() const;
    /// The complete copy.
    const SceneObjectPtr& copy() const noexcept { return m_copy; }

private:
    struct Pair
    {
        const SceneObject* original;
        SceneObject* copy;
    };

    SceneObjectPtr copyOf(const SceneObject& original);
    void resolveReferences();

    SceneObjectPtr m_copy;
    /// Level by level; the children of those before `m_next` and the first of its own are copied.
    std::vector<Pair> m_pairs;
    std::size_t m_next = 0;
    std::size_t m_nextChild = 0;
    std::unordered_map<const SceneObject*, std::vector<SceneObject*>> m_referring;
};

} // namespace editor
