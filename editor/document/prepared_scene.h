#pragma once

#include <editor/document/scene_object.h>

#include <unordered_map>

namespace editor {

using ObjectsById = std::unordered_map<quint32, SceneObject*>;

/// A free tree that has all that a document keeps of its objects, so that opening it costs the same
/// at any size. From then on the tree is not to be shaped before a document has it.
struct PreparedScene
{
    /// In any thread. Identifiers that are missing or taken are given anew. Linear.
    static PreparedScene from(SceneObjectPtr root);

    SceneObjectPtr root;
    std::shared_ptr<SceneMembership> membership;
    ObjectsById byId;
    quint32 lastId = 0;
};

} // namespace editor
