#pragma once

#include <editor/document/scene_document.h>

#include <functional>
#include <random>
#include <string>

namespace test {

/// A scene written as indented text, one object a line: "group A\n  mesh B\n  light C".
editor::SceneObjectPtr sceneFrom(const std::string& text);

/// The same kind of text again.
std::string shapeOf(const editor::SceneObject& root);

/// All there is to know of a scene: shape, identifiers, and the text of every property.
std::string contentOf(const editor::SceneObject& root);

/// The object at a path such as "A/B".
editor::SceneObjectPtr at(const editor::SceneDocument& document, const std::string& path);
editor::SceneObjects at(const editor::SceneDocument& document,
                        std::initializer_list<std::string> paths);

/// All objects below the root, from the top.
editor::SceneObjects allObjects(const editor::SceneDocument& document);

/// One random operation of a document; what it does depends on the generator alone.
void editAtRandom(editor::SceneDocument& document, std::mt19937& random);

} // namespace test
