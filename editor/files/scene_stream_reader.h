#pragma once

#include <editor/files/scene_import.h>

class QIODevice;

namespace editor {

/// The editor's end of the stream. Trusts nothing that comes: counts, indices, numbers and texts
/// are checked, and no more memory is taken than bytes have come.
class SceneStreamReader
{
public:
    /// Of a scene in the stream. More is taken for a fault of the importer.
    explicit SceneStreamReader(qint64 mostBytes) : m_mostBytes(mostBytes) {}

    enum class End
    {
        /// The scene is complete.
        Complete,
        /// The importer gave a reason against it.
        Refused,
        /// What came breaks the rules of the stream.
        Damaged,
        /// The device ended, or the progress function stopped it, before the stream did.
        Broken,
    };

    /// Reads to the end of the stream. Blocks as the device does.
    End read(QIODevice& device, const ImportProgress& progress);

    const SceneObjectPtr& root() const { return m_root; }
    /// The importer's reason, a bare one.
    const QString& reason() const { return m_reason; }
    /// Sentences without their full stops.
    const QStringList& notes() const { return m_notes; }

private:
    bool readProgress(const QByteArray& payload, const ImportProgress& progress);
    bool beginMesh(const QByteArray& payload);
    bool readData(const QByteArray& payload);
    bool finishMesh();
    bool readObject(const QByteArray& payload);

    qint64 m_mostBytes;
    SceneObjectPtr m_root;
    QString m_reason;
    QStringList m_notes;
    std::vector<MeshAssetPtr> m_meshes;
    std::vector<SceneObject*> m_objects;
    // The mesh whose bytes are being read.
    quint32 m_vertices = 0;
    quint32 m_indices = 0;
    std::vector<char> m_bytes;
    bool m_isInMesh = false;
};

} // namespace editor
