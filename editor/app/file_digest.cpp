#include "file_digest.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QObject>

#include <mutex>
#include <thread>

namespace editor {

namespace {

constexpr qint64 pieceBytes = 1 << 20;

} // namespace

/// What thread and object share.
struct FileDigest::Job
{
    bool isWanted()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return receiver != nullptr;
    }

    QString path;
    std::function<void(const QByteArray&)> done;
    std::mutex mutex;
    /// Null when nobody wants to know any more.
    QObject* receiver = nullptr;
};

FileDigest::FileDigest(const QString& path, QObject& receiver,
                       std::function<void(const QByteArray&)> done)
    : m_job(std::make_shared<Job>())
{
    m_job->path = path;
    m_job->done = std::move(done);
    m_job->receiver = &receiver;
    std::thread([job = m_job] {
        const QByteArray digest = digestOf(*job);
        const auto tell = [job, digest] {
            if (job->isWanted())
                job->done(digest);
        };
        const std::lock_guard<std::mutex> lock(job->mutex);
        if (job->receiver)
            QMetaObject::invokeMethod(job->receiver, tell, Qt::QueuedConnection);
    }).detach();
}

FileDigest::~FileDigest()
{
    const std::lock_guard<std::mutex> lock(m_job->mutex);
    m_job->receiver = nullptr;
}

// In the job's thread.
QByteArray FileDigest::digestOf(Job& job)
{
    QFile file(job.path);
    // A pipe would keep the opening waiting.
    if (!QFileInfo(job.path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha1);
    while (!file.atEnd()) {
        const QByteArray piece = file.read(pieceBytes);
        if (piece.isEmpty() || !job.isWanted())
            return {};
        hash.addData(piece);
    }
    return hash.result();
}

} // namespace editor
