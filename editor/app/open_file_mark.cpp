#include "open_file_mark.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace editor {

namespace {

QString markPath(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QByteArray name =
        QCryptographicHash::hash((canonical.isEmpty() ? path : canonical).toUtf8(),
                                 QCryptographicHash::Sha1)
            .toHex();
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    return folder.filePath(QStringLiteral("scene-editor-%1.lock").arg(QLatin1String(name)));
}

} // namespace

void OpenFileMark::follow(const QString& path)
{
    if (path == m_path)
        return;
    m_path = path;
    m_mark.reset();
    if (path.isEmpty())
        return;
    m_mark = std::make_unique<QLockFile>(markPath(path));
    // However long it is open; one whose process is gone does not count in any case.
    m_mark->setStaleLockTime(0);
    if (m_mark->tryLock())
        return;
    qint64 process = 0;
    QString host;
    QString program;
    if (m_mark->error() == QLockFile::LockFailedError &&
        m_mark->getLockInfo(&process, &host, &program))
        Q_EMIT openElsewhere(path, process);
    m_mark.reset();
}

} // namespace editor
