#include "gltf_container.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtEndian>

namespace editor {

namespace {

constexpr quint32 magic = 0x46546C67;
constexpr quint32 jsonChunk = 0x4E4F534A;
constexpr quint32 binaryChunk = 0x004E4942;
constexpr quint32 version = 2;
constexpr int headerSize = 12;
constexpr int chunkHeaderSize = 8;

quint32 wordAt(const QByteArray& bytes, int position)
{
    return position + 4 <= bytes.size() ? qFromLittleEndian<quint32>(bytes.constData() + position)
                                        : 0;
}

void appendWord(QByteArray& bytes, quint32 word)
{
    const quint32 little = qToLittleEndian(word);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

void appendChunk(QByteArray& bytes, quint32 type, QByteArray data, char padding)
{
    while (data.size() % 4 != 0)
        data.append(padding);
    appendWord(bytes, static_cast<quint32>(data.size()));
    appendWord(bytes, type);
    bytes.append(data);
}

QByteArray jsonOf(const QJsonObject& document, QJsonDocument::JsonFormat format)
{
    return QJsonDocument(document).toJson(format);
}

} // namespace

bool splitGlb(const QByteArray& bytes, GltfParts& parts)
{
    const auto jsonSize = static_cast<int>(wordAt(bytes, headerSize));
    if (wordAt(bytes, 0) != magic || wordAt(bytes, headerSize + 4) != jsonChunk || jsonSize < 0)
        return false;
    const QByteArray json = bytes.mid(headerSize + chunkHeaderSize, jsonSize);
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return false;
    parts.document = document.object();
    const int next = headerSize + chunkHeaderSize + jsonSize;
    if (wordAt(bytes, next + 4) == binaryChunk)
        parts.buffer = bytes.mid(next + chunkHeaderSize, static_cast<int>(wordAt(bytes, next)));
    return true;
}

QByteArray joinGlb(const GltfParts& parts)
{
    QByteArray chunks;
    appendChunk(chunks, jsonChunk, jsonOf(parts.document, QJsonDocument::Compact), ' ');
    if (!parts.buffer.isEmpty())
        appendChunk(chunks, binaryChunk, parts.buffer, '\0');
    QByteArray bytes;
    appendWord(bytes, magic);
    appendWord(bytes, version);
    appendWord(bytes, static_cast<quint32>(headerSize + chunks.size()));
    return bytes + chunks;
}

QByteArray joinGltf(const GltfParts& parts)
{
    QJsonObject document = parts.document;
    if (!parts.buffer.isEmpty()) {
        const QString data = QStringLiteral("data:application/octet-stream;base64,") +
                             QString::fromLatin1(parts.buffer.toBase64());
        document[QStringLiteral("buffers")] = QJsonArray{QJsonObject{
            {QStringLiteral("byteLength"), parts.buffer.size()}, {QStringLiteral("uri"), data}}};
    }
    return jsonOf(document, QJsonDocument::Indented);
}

} // namespace editor
