#pragma once

#include <QDateTime>
#include <QLockFile>
#include <QString>

namespace editor {

/// The folder of one session's unsaved work: the scene, what file it is of, and a lock that lives
/// as long as the session does.
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
    QDateTime written() const;

    /// Says what the scene that will be written is. Removes one of another file.
    void setOriginalPath(const QString& path);
    void removeScene();
    /// With all that is in it.
    void remove();

private:
    QString m_folder;
    QString m_originalPath;
    QLockFile m_lock;
};

} // namespace editor
