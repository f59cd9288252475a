#pragma once

#include <editor/document/scene_object.h>

#include <QByteArray>
#include <QString>

namespace editor {

/// The scene as one glTF 2 file: JSON with its buffer inside, or the binary container. Empty with
/// a bare reason in `error` when it cannot be said in that format.
QByteArray toGltf(const SceneObject& root, bool binary, QString& error);

} // namespace editor
