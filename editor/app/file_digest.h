#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

class QObject;

namespace editor {

/// Reads a file in a thread of its own and tells a digest of what is in it. Nobody waits for the
/// thread, as a disk may not answer: it ends when it notices that the object is gone.
class FileDigest
{
public:
    /// `done` is called in the thread of `receiver`, with nothing when the file cannot be read, and
    /// not after the object is destroyed, which has to be before the receiver is.
    FileDigest(const QString& path, QObject& receiver,
               std::function<void(const QByteArray& digest)> done);
    ~FileDigest();
    FileDigest(const FileDigest&) = delete;
    FileDigest& operator=(const FileDigest&) = delete;

private:
    struct Job;

    static QByteArray digestOf(Job& job);

    std::shared_ptr<Job> m_job;
};

} // namespace editor
