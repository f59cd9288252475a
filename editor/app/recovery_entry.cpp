#include "recovery_entry.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace editor {

namespace {

const char* const lockName = "/lock";
const char* const originName = "/origin";

// Nobody else's business.
QString made(const QString& folder)
{
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return folder;
}

} // namespace

RecoveryEntry::RecoveryEntry(const QString& folder)
    : m_folder(made(QDir::cleanPath(QFileInfo(folder).absoluteFilePath())))
    , m_lock(m_folder + QLatin1String(lockName))
{
    // It is stale when its process is gone, not when it is old.
    m_lock.setStaleLockTime(0);
    if (!m_lock.tryLock(0))
        return;
    QFile origin(m_folder + QLatin1String(originName));
    QDataStream stream(&origin);
    if (origin.open(QIODevice::ReadOnly))
        stream >> m_originalPath >> m_original.modified >> m_original.size >> m_original.digest;
}

bool RecoveryEntry::isFull() const
{
    return QFileInfo::exists(scenePath());
}

QString RecoveryEntry::scenePath() const
{
    const QString name = m_originalPath.isEmpty()
                             ? QCoreApplication::translate("editor::SceneDocument", "Untitled")
                             : QFileInfo(m_originalPath).completeBaseName();
    return QDir(m_folder).filePath(name + QLatin1String(".kyrscene"));
}

QDateTime RecoveryEntry::written() const
{
    return QFileInfo(scenePath()).lastModified();
}

void RecoveryEntry::setOriginal(const QString& path, const FileStamp& known)
{
    if (path != m_originalPath)
        removeScene();
    m_originalPath = path;
    m_original = known;
    QSaveFile origin(m_folder + QLatin1String(originName));
    QDataStream stream(&origin);
    if (!origin.open(QIODevice::WriteOnly))
        return;
    stream << m_originalPath << m_original.modified << m_original.size << m_original.digest;
    origin.commit();
}

void RecoveryEntry::removeScene()
{
    QFile::remove(scenePath());
}

void RecoveryEntry::remove()
{
    m_lock.unlock();
    QDir(m_folder).removeRecursively();
}

} // namespace editor
