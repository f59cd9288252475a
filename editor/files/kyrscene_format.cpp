#include "kyrscene_format.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

namespace editor::kyrscene {

namespace {

constexpr qint64 bytesPerVertex = 6 * sizeof(float);
constexpr qint64 bytesPerIndex = sizeof(quint32);
constexpr qint64 headerBytes = 2 * sizeof(quint32);
// What the compression reaches at best; anything above is a forged size.
constexpr qint64 bestRatio = 1040;

void prepare(QDataStream& stream)
{
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
}

void write(QDataStream& stream, const QVector3D& vector)
{
    stream << vector.x() << vector.y() << vector.z();
}

QVector3D readVector(QDataStream& stream)
{
    float x = 0;
    float y = 0;
    float z = 0;
    stream >> x >> y >> z;
    return {x, y, z};
}

// The uncompressed size, as the first four bytes promise it.
bool isPlausible(const QByteArray& compressed)
{
    if (compressed.size() < 4)
        return false;
    const qint64 promised = qFromBigEndian<quint32>(compressed.constData());
    return promised <= compressed.size() * bestRatio;
}

} // namespace

QByteArray encodeGeometry(const MeshGeometry& geometry)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    stream << static_cast<quint32>(geometry.vertices().size())
           << static_cast<quint32>(geometry.indices().size());
    for (const MeshGeometry::Vertex& vertex : geometry.vertices()) {
        write(stream, vertex.position);
        write(stream, vertex.normal);
    }
    for (const quint32 index : geometry.indices())
        stream << index;
    return qCompress(bytes).toBase64();
}

MeshGeometryPtr decodeGeometry(const QByteArray& text)
{
    const QByteArray compressed = QByteArray::fromBase64(text);
    if (!isPlausible(compressed))
        return nullptr;
    const QByteArray bytes = qUncompress(compressed);
    QDataStream stream(bytes);
    prepare(stream);
    quint32 vertexCount = 0;
    quint32 indexCount = 0;
    stream >> vertexCount >> indexCount;
    if (bytes.size() != headerBytes + vertexCount * bytesPerVertex + indexCount * bytesPerIndex)
        return nullptr;
    std::vector<QVector3D> positions(vertexCount);
    std::vector<QVector3D> normals(vertexCount);
    for (quint32 i = 0; i < vertexCount; ++i) {
        positions[i] = readVector(stream);
        normals[i] = readVector(stream);
    }
    std::vector<quint32> indices(indexCount);
    for (quint32& index : indices)
        stream >> index;
    return std::make_shared<MeshGeometry>(positions, normals, std::move(indices));
}

} // namespace editor::kyrscene
