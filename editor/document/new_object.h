#pragma once

#include <editor/document/scene_object.h>

#include <string_view>

namespace editor {

/// A kind of object that users add to a scene.
struct NewObject
{
    const char* identifier;
    /// The object's name as well.
    const char* name;
    ObjectKind kind;
    /// The shape of a mesh, as `makePrimitive` takes it; null for other kinds.
    const char* shape;
    LightType light;
};

/// All of them, grouped by kind.
const std::vector<NewObject>& newObjects();

/// A free object of that kind with usual values.
SceneObjectPtr makeNewObject(const NewObject& what);

} // namespace editor
