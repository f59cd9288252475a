#pragma once

#include <string>
#include <string_view>

namespace editor {

class SceneObject;

/// Names from below the root down to the object, joined with "/": "Lamps/Lamp". A name's own "/",
/// "[" and "\" carry a "\" before them; the n-th sibling of the same name ends in "[n]", from 2 on.
/// Linear in the siblings along the way.
std::string objectPath(const SceneObject& object);

/// Null when there is no such object. The empty path is the root itself.
SceneObject* objectAtPath(SceneObject& root, std::string_view path);

} // namespace editor
