#include "screenshot.h"

#include <QImageWriter>

namespace editor {

namespace {

// The 3D view draws on a thread of its own, a few frames behind what is asked of it. It has come
// to rest when several pictures in a row are the same.
constexpr int lookInterval = 150;
constexpr int stillLooksWanted = 6;
constexpr int mostLooks = 200;

} // namespace

Screenshot::Screenshot(QQuickWindow* window, const QString& path, QObject* parent)
    : QObject(parent), m_window(window), m_path(path)
{
    m_timer.setInterval(lookInterval);
    connect(&m_timer, &QTimer::timeout, this, &Screenshot::look);
}

void Screenshot::start()
{
    m_timer.start();
}

void Screenshot::look()
{
    if (!m_window)
        return;
    const QImage image = m_window->grabWindow();
    m_stillLooks = image == m_last && !image.isNull() ? m_stillLooks + 1 : 0;
    m_last = image;
    if (m_stillLooks < stillLooksWanted && ++m_looks < mostLooks)
        return;
    m_timer.stop();
    QImageWriter writer(m_path);
    if (writer.write(image))
        Q_EMIT written();
    else
        Q_EMIT failed(tr("%1: %2").arg(m_path, writer.errorString()));
}

} // namespace editor
