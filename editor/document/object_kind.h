#pragma once

#include <QLatin1String>

namespace editor {

/// What an object of a scene is. Decides which components it has.
enum class ObjectKind : unsigned char
{
    Scene,
    Group,
    Mesh,
    Light,
    Camera,
};

/// The identifier that views and files use: "scene", "group", "mesh", "light" or "camera".
QLatin1String kindId(ObjectKind kind) noexcept;

} // namespace editor
