#pragma once

#include <editor/files/scene_stream.h>

#include <QVector3D>

#include <vector>

class QIODevice;

namespace editor {

/// The importer's end of the stream. What cannot be written is lost: the reader has gone then.
class SceneStreamWriter
{
public:
    /// The device must outlive the writer.
    explicit SceneStreamWriter(QIODevice& device);

    /// From 0 to 1. Tells only what differs enough to be seen.
    void progress(double share);
    /// A sentence without its full stop. Of a flood of them only the first are kept.
    void note(const QString& text);
    /// As many normals as positions. Returns the mesh's index.
    qint32 mesh(const std::vector<QVector3D>& positions, const std::vector<QVector3D>& normals,
                const std::vector<quint32>& indices);
    /// Returns the object's index.
    qint32 object(const StreamedObject& object);

    // Each of these comes last.

    void finish();
    void fail(const QString& reason);

private:
    void write(stream::Tag tag, const QByteArray& payload = {});
    void write(stream::Tag tag, const QString& text);

    QIODevice& m_device;
    QByteArray m_pending;
    double m_told = -1;
    int m_notes = 0;
    qint32 m_meshes = 0;
    qint32 m_objects = 0;
};

} // namespace editor
