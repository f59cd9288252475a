#pragma once

#include <QObject>
#include <QStringList>

namespace editor {

/// The files that were open last, the latest one first. Remembered from one run to the next.
class RecentFiles final : public QObject
{
    Q_OBJECT
    /// Absolute.
    Q_PROPERTY(QStringList paths READ paths NOTIFY changed)
    /// What a menu shows for them: the file's name, and its folder.
    Q_PROPERTY(QStringList titles READ titles NOTIFY changed)

public:
    static constexpr int most = 10;

    explicit RecentFiles(QObject* parent = nullptr);

    QStringList paths() const { return m_paths; }
    QStringList titles() const;

    /// Ignores an empty path.
    void add(const QString& path);
    void remove(const QString& path);
    void clear();

Q_SIGNALS:
    void changed();

private:
    void remember(const QStringList& paths);

    QStringList m_paths;
};

} // namespace editor
