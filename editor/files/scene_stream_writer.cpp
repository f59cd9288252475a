#include "scene_stream_writer.h"

#include <QCoreApplication>
#include <QIODevice>

namespace editor {

namespace {

constexpr double smallestStep = 0.005;
constexpr int mostNotes = 50;
constexpr int enough = 1 << 16;

QString cutTo(int bytes, const QString& text)
{
    // A code unit takes three bytes at most.
    return text.left(bytes / 3);
}

} // namespace

SceneStreamWriter::SceneStreamWriter(QIODevice& device) : m_device(device)
{
    QByteArray payload;
    QDataStream(&payload, QIODevice::WriteOnly) << stream::magic;
    write(stream::Tag::Hello, payload);
}

void SceneStreamWriter::progress(double share)
{
    if (share - m_told < smallestStep)
        return;
    m_told = share;
    QByteArray payload;
    QDataStream out(&payload, QIODevice::WriteOnly);
    stream::prepare(out);
    out << float(share);
    write(stream::Tag::Progress, payload);
}

void SceneStreamWriter::note(const QString& text)
{
    if (++m_notes <= mostNotes)
        write(stream::Tag::Note, text);
}

qint32 SceneStreamWriter::mesh(const std::vector<QVector3D>& positions,
                               const std::vector<QVector3D>& normals,
                               const std::vector<quint32>& indices)
{
    Q_ASSERT(positions.size() == normals.size());
    QByteArray payload;
    QDataStream out(&payload, QIODevice::WriteOnly);
    stream::prepare(out);
    out << quint32(positions.size()) << quint32(indices.size());
    write(stream::Tag::Mesh, payload);

    QByteArray bytes;
    const auto append = [&](const void* data, std::size_t size) {
        bytes.append(static_cast<const char*>(data), int(size));
        if (quint32(bytes.size()) > stream::largestFrame / 2) {
            write(stream::Tag::Data, bytes);
            bytes.clear();
        }
    };
    for (std::size_t i = 0; i < positions.size(); ++i) {
        append(&positions[i], sizeof positions[i]);
        append(&normals[i], sizeof normals[i]);
    }
    for (const quint32 index : indices)
        append(&index, sizeof index);
    if (!bytes.isEmpty())
        write(stream::Tag::Data, bytes);
    return m_meshes++;
}

qint32 SceneStreamWriter::object(const StreamedObject& object)
{
    QByteArray payload;
    QDataStream out(&payload, QIODevice::WriteOnly);
    stream::prepare(out);
    out << object;
    write(stream::Tag::Object, payload);
    return m_objects++;
}

void SceneStreamWriter::finish()
{
    if (m_notes > mostNotes)
        write(stream::Tag::Note, QCoreApplication::translate("editor::SceneImport",
                                                             "there are %1 more remarks like these")
                                     .arg(m_notes - mostNotes));
    write(stream::Tag::End);
}

void SceneStreamWriter::fail(const QString& reason)
{
    write(stream::Tag::Failure, reason);
}

void SceneStreamWriter::write(stream::Tag tag, const QString& text)
{
    write(tag, cutTo(stream::largestText, text).toUtf8());
}

void SceneStreamWriter::write(stream::Tag tag, const QByteArray& payload)
{
    QDataStream out(&m_pending, QIODevice::WriteOnly | QIODevice::Append);
    out << quint32(payload.size()) << quint8(tag);
    out.writeRawData(payload.constData(), payload.size());
    // Objects are small and many; all else may be waited for.
    if (tag == stream::Tag::Object && m_pending.size() < enough)
        return;
    m_device.write(m_pending);
    m_pending.clear();
}

} // namespace editor
