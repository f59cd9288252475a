#pragma once

#include <QByteArray>
#include <QJsonObject>

namespace editor {

/// The two parts of a binary glTF file. Their layout is the one of glTF 2.0, chapter "Binary glTF
/// Layout".
struct GltfParts
{
    QJsonObject document;
    QByteArray buffer;
};

/// False when `bytes` are no such file.
bool splitGlb(const QByteArray& bytes, GltfParts& parts);
QByteArray joinGlb(const GltfParts& parts);
/// JSON with the buffer as a data URI.
QByteArray joinGltf(const GltfParts& parts);

} // namespace editor
