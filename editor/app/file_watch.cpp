#include "file_watch.h"

#include <QFileInfo>

namespace editor {

namespace {

// Milliseconds. Programs write in several steps.
constexpr int restTime = 300;

} // namespace

FileStamp FileStamp::of(const QString& path)
{
    QFileInfo file(path);
    file.setCaching(false);
    return file.exists() ? FileStamp{file.lastModified(), file.size()} : FileStamp{};
}

FileWatch::FileWatch(QObject* parent) : QObject(parent)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(restTime);
    const auto wait = [this] { m_rest.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, wait);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, wait);
    connect(&m_rest, &QTimer::timeout, this, &FileWatch::look);
}

void FileWatch::follow(const QString& path, const FileStamp& known)
{
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    if (!watched.isEmpty())
        m_watcher.removePaths(watched);
    m_path = path;
    m_known = known;
    m_told = known;
    if (m_path.isEmpty())
        return;
    // The folder tells of files that take the place of ours.
    m_watcher.addPath(QFileInfo(m_path).absolutePath());
    m_rest.start();
}

void FileWatch::accept()
{
    m_known = FileStamp::of(m_path);
    m_told = m_known;
}

bool FileWatch::isChanged() const
{
    const FileStamp now = FileStamp::of(m_path);
    return now.modified.isValid() && !(now == m_known);
}

void FileWatch::look()
{
    // The watcher forgets a file that was replaced.
    if (m_watcher.files().isEmpty() && QFileInfo::exists(m_path))
        m_watcher.addPath(m_path);
    const FileStamp now = FileStamp::of(m_path);
    if (!now.modified.isValid() || now == m_known || now == m_told)
        return;
    m_told = now;
    Q_EMIT changed();
}

} // namespace editor
