#pragma once

#include <QJsonObject>
#include <QString>

namespace editor {

/// The JSON of a glTF file, text or binary. Nothing with a reason that says where it breaks off.
/// The layout is the one of glTF 2.0, chapter "Binary glTF Layout".
QJsonObject readGltfText(const QString& path, QString& reason);

} // namespace editor
