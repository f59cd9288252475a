#pragma once

#include <editor/document/scene_object.h>

#include <QByteArray>

namespace editor {

/// The scene in the bundled format, see kyrscene_format.h.
QByteArray toKyrscene(const SceneObject& root);

} // namespace editor
