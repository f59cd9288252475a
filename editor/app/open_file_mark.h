#pragma once

#include <QLockFile>
#include <QObject>

#include <memory>

namespace editor {

/// Marks the open file for the user's other editors on this machine, and tells when one of them has
/// it open already. The mark is in the user's runtime folder, not beside the file.
class OpenFileMark final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Takes the mark from the file before; an empty path is no file.
    void follow(const QString& path);

Q_SIGNALS:
    /// `process` is the other editor's number.
    void openElsewhere(const QString& path, qint64 process);

private:
    QString m_path;
    std::unique_ptr<QLockFile> m_mark;
};

} // namespace editor
