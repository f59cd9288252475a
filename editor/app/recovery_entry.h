#pragma once

#include <editor/app/file_stamp.h>

#include <QLockFile>
#include <QString>

namespace editor {

/// The folder of one session's unsaved work: the scene, what file it is of in which state, and a
/// lock that lives as long as the session does.
class RecoveryEntry
{
public:
    /// Takes the folder, which is made when it does not exist.
    explicit RecoveryEntry(const QString& folder);

    /// False when the session that owns it is running, or the folder cannot be made.
    bool isOurs() const { return m_lock.isLocked(); }
    /// Whether there is a scene in it.
    bool isFull() const;
    /// Where the scene is, under the name of its file.
    QString scenePath() const;
    /// The file that it is of; empty for a scene that was never saved.
    QString originalPath() const { return m_originalPath; }
    /// That file as the session had read or written it last.
    const FileStamp& original() const { return m_original; }
    QDateTime written() const;

    /// Says what the scene that will be written is. Removes one of another file.
    void setOriginal(const QString& path, const FileStamp& known);
    void removeScene();
    /// With all that is in it.
    void remove();

private:
    QString m_folder;
    QString m_originalPath;
    FileStamp m_original;
    QLockFile m_lock;
};

} // namespace editor
