#pragma once

#include <editor/document/components.h>
#include <editor/document/object_kind.h>

#include <QByteArray>
#include <QDataStream>

namespace editor {

// How the importer process hands a scene to the editor: frames of a length, a tag and as many
// bytes, in the layout of `QDataStream` with single precision. First `Hello` with `magic`, then in
// any order progress, notes, meshes and objects, each after what it refers to, and `End` or
// `Failure` as the last one. A mesh announces its counts; its bytes follow in `Data` frames:
// position and normal a vertex, then three indices a triangle.

namespace stream {

constexpr quint32 magic = 0x4B595202;
constexpr quint32 largestFrame = 1u << 20;
constexpr quint32 largestText = 1u << 16;
constexpr quint64 bytesPerVertex = 6 * sizeof(float);
constexpr quint64 bytesPerIndex = sizeof(quint32);

enum class Tag : quint8
{
    Hello,
    /// float, from 0 to 1.
    Progress,
    /// UTF-8: what was left out or mended.
    Note,
    /// Two quint32: vertices and indices.
    Mesh,
    Data,
    Object,
    End,
    /// UTF-8: why there is no scene.
    Failure,
};

void prepare(QDataStream& stream);

} // namespace stream

/// An object as the stream has it. Of the components, those of its kind count.
struct StreamedObject
{
    /// Index of an object before it; -1 for the scene itself.
    qint32 parent = -1;
    ObjectKind kind = ObjectKind::Group;
    bool isExpanded = false;
    /// UTF-8.
    QByteArray name;
    TransformComponent transform;
    MaterialComponent material;
    LightComponent light;
    CameraComponent camera;
    /// Index of a mesh before it; -1 for none.
    qint32 mesh = -1;
};

QDataStream& operator<<(QDataStream& stream, const StreamedObject& object);
/// Takes what comes; judging it is left to the reader.
QDataStream& operator>>(QDataStream& stream, StreamedObject& object);

} // namespace editor
