#pragma once

#include <editor/document/scene_document.h>

#include <random>
#include <string>

namespace test {

/// A scene written as indented text, one object a line, with values where it has some:
/// "group A\n  mesh B | shape=box 1 2 3 | transform.position=1 2 3\n  light C". Equal shapes are
/// one asset. Throws what is no property or no value.
editor::SceneObjectPtr sceneFrom(const std::string& text, const char* name = "Scene");

/// Groups of `perGroup` small meshes each, side by side, until there are so many objects without
/// the root: "Group 1", "Box 1" ...
editor::SceneObjectPtr gridScene(int objectCount, int perGroup);

/// Groups below each other.
editor::SceneObjectPtr deepScene(int depth);

/// The names on one line: "A(B C)".
std::string shapeOf(const editor::SceneObject& root);

/// All there is to know of a scene: shape, identifiers, and the text of every property.
std::string contentOf(const editor::SceneObject& root);

/// The object at a path such as "A/B".
editor::SceneObjectPtr at(const editor::SceneDocument& document, const std::string& path);
template <typename... Paths>
editor::SceneObjects objectsAt(const editor::SceneDocument& document, Paths... paths)
{
    return {at(document, paths)...};
}

/// All objects below another, from the top.
editor::SceneObjects allBelow(const editor::SceneObject& top);
editor::SceneObjects allObjects(const editor::SceneDocument& document);

/// One random operation of a document; what it does depends on the generator alone.
void editAtRandom(editor::SceneDocument& document, std::mt19937& random);

} // namespace test
