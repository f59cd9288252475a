#include "gltf_text.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QTextCodec>
#include <QtEndian>

namespace editor {

namespace {

constexpr quint32 magic = 0x46546C67;
constexpr quint32 jsonChunk = 0x4E4F534A;
constexpr qint64 headerSize = 12;
constexpr qint64 chunkHeaderSize = 8;
constexpr qint64 largestText = 1 << 30;
constexpr int shownAround = 24;

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

quint32 wordAt(const QByteArray& bytes, int position)
{
    return qFromLittleEndian<quint32>(bytes.constData() + position);
}

/// The JSON chunk, after a look at the lengths of all.
QByteArray jsonOfBinary(QFile& file, QString& reason)
{
    const QByteArray header = file.peek(headerSize + chunkHeaderSize);
    if (header.size() < headerSize + chunkHeaderSize) {
        reason = tr("it ends within its header");
        return {};
    }
    if (wordAt(header, 4) != 2)
        return {}; // version 1 is laid out in another way
    const qint64 length = wordAt(header, 8);
    if (length > file.size()) {
        reason = tr("its header promises %1 bytes, but there are %2").arg(length).arg(file.size());
        return {};
    }
    QByteArray json;
    for (qint64 at = headerSize; at + chunkHeaderSize <= length;) {
        file.seek(at);
        const QByteArray chunk = file.read(chunkHeaderSize);
        const qint64 size = wordAt(chunk, 0);
        if (size > length - at - chunkHeaderSize) {
            reason = tr("the chunk at byte %1 promises %2 bytes, but there are %3")
                         .arg(at)
                         .arg(size)
                         .arg(length - at - chunkHeaderSize);
            return {};
        }
        if (wordAt(chunk, 4) == jsonChunk && json.isNull())
            json = file.read(std::min(size, largestText));
        at += chunkHeaderSize + size;
    }
    if (json.isNull())
        reason = tr("it has no JSON chunk");
    return json;
}

int endOfText(const QByteArray& text)
{
    QTextCodec* codec = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState all;
    codec->toUnicode(text.constData(), text.size(), &all);
    if (all.invalidChars == 0 && all.remainingChars == 0)
        return -1;
    // Converting it anew by lines finds the place without a decoder of our own.
    for (int from = 0; from < text.size();) {
        int to = text.indexOf('\n', from) + 1;
        to = to > 0 ? to : text.size();
        QTextCodec::ConverterState line;
        const QString converted = codec->toUnicode(text.constData() + from, to - from, &line);
        if (line.invalidChars > 0 || line.remainingChars > 0)
            return from +
                   converted.left(converted.indexOf(QChar::ReplacementCharacter)).toUtf8().size();
        from = to;
    }
    return text.size();
}

QString placeIn(const QByteArray& text, int offset)
{
    const QByteArray before = text.left(offset);
    const int lineStart = before.lastIndexOf('\n') + 1;
    return tr("line %1, column %2").arg(before.count('\n') + 1).arg(offset - lineStart + 1);
}

} // namespace

QJsonObject readGltfText(const QString& path, QString& reason)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        reason = file.errorString();
        return {};
    }
    if (file.size() > largestText && !file.peek(4).startsWith("glTF")) {
        reason = tr("its text is larger than a gibibyte");
        return {};
    }
    const QByteArray start = file.peek(4);
    const bool isBinary = start.size() == 4 && wordAt(start, 0) == magic;
    QByteArray text = isBinary ? jsonOfBinary(file, reason) : file.readAll();
    if (text.isNull() || !reason.isEmpty())
        return {};
    while (text.endsWith('\0')) // padding of careless writers
        text.chop(1);
    const int invalid = endOfText(text);
    if (invalid >= 0) {
        reason = tr("%1: this is no valid UTF-8").arg(placeIn(text, invalid));
        return {};
    }
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (!document.isObject()) {
        const QString around =
            QString::fromUtf8(text.mid(std::max(0, error.offset - 1), shownAround)).simplified();
        reason = error.error == QJsonParseError::NoError
                     ? tr("it holds no JSON object")
                     : tr("%1: %2 at \"%3\"")
                           .arg(placeIn(text, error.offset), error.errorString(), around);
    }
    return document.object();
}

} // namespace editor
