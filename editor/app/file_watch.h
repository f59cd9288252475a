#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace editor {

/// The state of a file, to tell later whether somebody has written it since.
struct FileStamp
{
    /// That of a missing file is invalid.
    static FileStamp of(const QString& path);

    QDateTime modified;
    qint64 size = 0;

    friend bool operator==(const FileStamp& a, const FileStamp& b)
    {
        return a.modified == b.modified && a.size == b.size;
    }
};

/// Tells when the file of the open scene is changed by somebody else.
class FileWatch final : public QObject
{
    Q_OBJECT

public:
    explicit FileWatch(QObject* parent = nullptr);

    /// Watches `path`, whose known state is `known`. An empty path ends the watch.
    void follow(const QString& path, const FileStamp& known);
    /// The file as it is now is the known one.
    void accept();
    /// Whether the file is there and another one than the known one.
    bool isChanged() const;

Q_SIGNALS:
    /// Once for each change, when the writer has come to rest.
    void changed();

private:
    void look();

    QFileSystemWatcher m_watcher;
    QTimer m_rest;
    QString m_path;
    FileStamp m_known;
    FileStamp m_told;
};

} // namespace editor
