#pragma once

#include <editor/app/file_stamp.h>

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace editor {

class FileDigest;

/// Tells when the file of the open scene is changed by somebody else. Where a file was touched and
/// is as long as before, its contents are compared, in a thread.
class FileWatch final : public QObject
{
    Q_OBJECT

public:
    explicit FileWatch(QObject* parent = nullptr);
    ~FileWatch() override;

    /// Watches `path`, whose known state is `known`; its contents are read when it has no digest.
    /// An empty path ends the watch. Open questions are dropped.
    void follow(const QString& path, const FileStamp& known);
    /// The file as it is now is the known one.
    void accept();
    const FileStamp& known() const { return m_known; }
    /// Answers whether the file is there and says something else than the known one: at once, or
    /// when the contents are compared.
    void ask(std::function<void(bool isChanged)> answer);

Q_SIGNALS:
    /// Once for each change, when the writer has come to rest.
    void changed();

private:
    void look();
    void learn(const QByteArray& digest);
    void decide();
    void compare(const FileStamp& now, const QByteArray& digest);
    void answer(bool isChanged);

    QFileSystemWatcher m_watcher;
    QTimer m_rest;
    QString m_path;
    FileStamp m_known;
    FileStamp m_told;
    std::vector<std::function<void(bool)>> m_questions;
    std::unique_ptr<FileDigest> m_reading;
};

} // namespace editor
