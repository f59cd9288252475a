#pragma once

#include <editor/document/scene_object.h>

#include <QStringList>

namespace editor {

/// What a glTF file of the scene will not carry, or carry changed: one line for each kind of loss,
/// with the number of objects and the names of the first. Linear in the scene.
QStringList exportLosses(const SceneObject& root);

} // namespace editor
