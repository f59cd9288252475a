#include "kyrscene_format.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <limits>

#include <zlib.h>

namespace editor::kyrscene {

namespace {

constexpr qint64 bytesPerVertex = 6 * sizeof(float);
constexpr qint64 bytesPerIndex = sizeof(quint32);
constexpr qint64 headerBytes = 2 * sizeof(quint32);
constexpr int sizeBytes = 4;
// What the compression reaches at best; anything above is a forged size.
constexpr qint64 bestRatio = 1040;
constexpr qint64 largestGeometry = std::numeric_limits<int>::max() / 2;

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

bool isFinite(const QVector3D& v)
{
    return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z());
}

/// As the first four bytes of the compressed data promise it.
qint64 promisedSize(const QByteArray& head)
{
    return head.size() < sizeBytes ? 0 : qFromBigEndian<quint32>(head.constData());
}

/// Empty when the data unpacks to anything but what it promises.
QByteArray unpack(const QByteArray& compressed)
{
    QByteArray bytes(int(promisedSize(compressed)), Qt::Uninitialized);
    auto size = static_cast<uLongf>(bytes.size());
    const int result =
        uncompress(reinterpret_cast<Bytef*>(bytes.data()), &size,
                   reinterpret_cast<const Bytef*>(compressed.constData()) + sizeBytes,
                   static_cast<uLong>(compressed.size() - sizeBytes));
    return result == Z_OK && size == static_cast<uLongf>(bytes.size()) ? bytes : QByteArray();
}

} // namespace

QByteArray encodeGeometry(const MeshGeometry& geometry)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    stream << quint32(geometry.vertices().size()) << quint32(geometry.indices().size());
    for (const MeshGeometry::Vertex& vertex : geometry.vertices()) {
        write(stream, vertex.position);
        write(stream, vertex.normal);
    }
    for (const quint32 index : geometry.indices())
        stream << index;
    return qCompress(bytes).toBase64();
}

std::optional<qint64> unpackedSize(const QByteArray& text)
{
    const qint64 promised = promisedSize(QByteArray::fromBase64(text.left(sizeBytes * 2)));
    const bool isPlausible = promised >= headerBytes && promised <= largestGeometry &&
                             promised <= text.size() * bestRatio;
    return isPlausible ? std::optional(promised) : std::nullopt;
}

MeshGeometryPtr decodeGeometry(const QByteArray& text, int& leftOut)
{
    if (!unpackedSize(text))
        return nullptr;
    const QByteArray bytes = unpack(QByteArray::fromBase64(text));
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
        if (!isFinite(normals[i]))
            normals[i] = {};
    }
    std::vector<quint32> indices;
    indices.reserve(indexCount);
    for (quint32 i = 0; i + 2 < indexCount; i += 3) {
        quint32 corners[3];
        stream >> corners[0] >> corners[1] >> corners[2];
        if (std::all_of(corners, corners + 3, [&](quint32 corner) {
                return corner < vertexCount && isFinite(positions[corner]);
            }))
            indices.insert(indices.end(), corners, corners + 3);
        else
            ++leftOut;
    }
    for (QVector3D& position : positions) {
        if (!isFinite(position))
            position = {};
    }
    return std::make_shared<MeshGeometry>(positions, normals, std::move(indices));
}

} // namespace editor::kyrscene
