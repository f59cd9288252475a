#include "recent_files.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace editor {

static const auto settingsKey = QStringLiteral("files/recent");

RecentFiles::RecentFiles(QObject* parent)
    : QObject(parent), m_paths(QSettings().value(settingsKey).toStringList().mid(0, most))
{}

QStringList RecentFiles::titles() const
{
    QStringList titles;
    for (const QString& path : m_paths) {
        const QFileInfo file(path);
        titles.append(tr("%1  –  %2").arg(file.fileName(), QDir::toNativeSeparators(file.path())));
    }
    return titles;
}

void RecentFiles::add(const QString& path)
{
    if (path.isEmpty() || m_paths.value(0) == path)
        return;
    QStringList paths = m_paths;
    paths.removeAll(path);
    paths.prepend(path);
    remember(paths.mid(0, most));
}

void RecentFiles::remove(const QString& path)
{
    QStringList paths = m_paths;
    if (paths.removeAll(path) > 0)
        remember(paths);
}

void RecentFiles::clear()
{
    remember({});
}

void RecentFiles::remember(const QStringList& paths)
{
    m_paths = paths;
    QSettings().setValue(settingsKey, m_paths);
    Q_EMIT changed();
}

} // namespace editor
