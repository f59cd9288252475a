#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QTimer>

namespace editor {

/// Writes a picture of a window once what it draws has come to rest.
class Screenshot final : public QObject
{
    Q_OBJECT

public:
    Screenshot(QQuickWindow* window, const QString& path, QObject* parent = nullptr);

    /// Begins to watch the window; call it when everything to show is there.
    void start();

Q_SIGNALS:
    void written();
    /// `reason` is one sentence that names the file.
    void failed(const QString& reason);

private:
    void look();

    QPointer<QQuickWindow> m_window;
    QString m_path;
    QTimer m_timer;
    QImage m_last;
    int m_stillLooks = 0;
    int m_looks = 0;
};

} // namespace editor
