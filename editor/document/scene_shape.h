#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace editor {

/// How the objects of a generated scene hang together. Bushy: half of them are parents.
enum class SceneShape
{
    Flat,
    ThousandLevels,
    Chain,
    ThousandParents,
    Bushy
};

/// The parent of each object, -1 for top-level ones; parents come before their children.
inline std::vector<int> parentsOf(SceneShape shape, int count)
{
    const int level = std::max(1, count / 1000);
    auto parents = std::vector<int>(std::size_t(count));
    for (int object = 0; object < count; ++object) {
        int& parent = parents[std::size_t(object)];
        switch (shape) {
        case SceneShape::Flat:
            parent = -1;
            break;
        case SceneShape::ThousandLevels:
            parent = object < level ? -1 : (object / level - 1) * level;
            break;
        case SceneShape::Chain:
            parent = object - 1;
            break;
        case SceneShape::ThousandParents:
            parent = object < 1000 ? -1 : object % 1000;
            break;
        case SceneShape::Bushy:
            parent = object == 0 ? -1 : (object - 1) / 2;
            break;
        }
    }
    return parents;
}

} // namespace editor
