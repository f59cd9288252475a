#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace editor {

/// The state of a file, to tell later whether somebody has written it since.
struct FileStamp
{
    /// That of a missing file has no time, and none has a digest.
    static FileStamp of(const QString& path);

    bool exists() const { return modified.isValid(); }
    /// Whether the file was not even touched in between.
    bool hasSameTime(const FileStamp& other) const
    {
        return modified == other.modified && size == other.size;
    }

    QDateTime modified = {};
    qint64 size = 0;
    /// Of the contents, by `FileDigest`; empty while nobody has read them.
    QByteArray digest = {};
};

} // namespace editor
