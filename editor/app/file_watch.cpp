#include "file_watch.h"

#include "file_digest.h"

#include <QFileInfo>

#include <utility>

namespace editor {

namespace {

// Milliseconds. Programs write in several steps.
constexpr int restTime = 300;

} // namespace

FileStamp FileStamp::of(const QString& path)
{
    QFileInfo file(path);
    file.setCaching(false);
    return file.exists() ? FileStamp{file.lastModified(), file.size()} : FileStamp();
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

FileWatch::~FileWatch() = default;

void FileWatch::follow(const QString& path, const FileStamp& known)
{
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    if (!watched.isEmpty())
        m_watcher.removePaths(watched);
    m_path = path;
    m_known = known;
    m_told = known;
    m_questions.clear();
    m_reading.reset();
    if (m_path.isEmpty())
        return;
    if (m_known.digest.isEmpty()) {
        m_reading = std::make_unique<FileDigest>(
            m_path, *this, [this](const QByteArray& digest) { learn(digest); });
    }
    // The folder tells of files that take the place of ours.
    m_watcher.addPath(QFileInfo(m_path).absolutePath());
    m_rest.start();
}

void FileWatch::accept()
{
    follow(QString(m_path), FileStamp::of(m_path));
}

void FileWatch::ask(std::function<void(bool)> answer)
{
    m_questions.push_back(std::move(answer));
    decide();
}

void FileWatch::learn(const QByteArray& digest)
{
    m_reading.reset();
    if (FileStamp::of(m_path).hasSameTime(m_known))
        m_known.digest = digest;
    decide();
}

void FileWatch::decide()
{
    if (m_questions.empty())
        return;
    const FileStamp now = FileStamp::of(m_path);
    if (!now.exists() || now.hasSameTime(m_known)) {
        answer(false);
    } else if (now.size != m_known.size) {
        answer(true);
    } else if (m_reading) {
        return; // and decides when that is done
    } else if (m_known.digest.isEmpty()) {
        answer(true);
    } else {
        m_reading = std::make_unique<FileDigest>(
            m_path, *this, [this, now](const QByteArray& digest) { compare(now, digest); });
    }
}

void FileWatch::compare(const FileStamp& now, const QByteArray& digest)
{
    m_reading.reset();
    const bool isChanged = digest != m_known.digest;
    if (!isChanged)
        m_known.modified = now.modified;
    answer(isChanged);
}

void FileWatch::answer(bool isChanged)
{
    for (const auto& question : std::exchange(m_questions, {}))
        question(isChanged);
}

void FileWatch::look()
{
    // The watcher forgets a file that was replaced.
    if (m_watcher.files().isEmpty() && QFileInfo::exists(m_path))
        m_watcher.addPath(m_path);
    const FileStamp now = FileStamp::of(m_path);
    if (now.hasSameTime(m_told))
        return;
    ask([this, now](bool isChanged) {
        m_told = now;
        if (isChanged)
            Q_EMIT changed();
    });
}

} // namespace editor
