#include "window_state.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QWindow>

#include <algorithm>

namespace editor {

namespace {

const auto geometryKey = QStringLiteral("window/geometry");
const auto maximizedKey = QStringLiteral("window/maximized");

/// The screen that shows most of it; null when none shows any.
const QScreen* screenOf(const QRect& geometry)
{
    const auto shown = [&geometry](const QScreen* screen) {
        const QRect part = screen->availableGeometry() & geometry;
        return part.isEmpty() ? 0 : part.width() * part.height();
    };
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto best = std::max_element(screens.begin(), screens.end(),
                                       [&](QScreen* a, QScreen* b) { return shown(a) < shown(b); });
    return best != screens.end() && shown(*best) > 0 ? *best : nullptr;
}

QRect fitted(QRect geometry, const QRect& available)
{
    geometry.setSize(geometry.size().boundedTo(available.size()));
    geometry.moveLeft(
        qBound(available.left(), geometry.left(), available.right() + 1 - geometry.width()));
    geometry.moveTop(
        qBound(available.top(), geometry.top(), available.bottom() + 1 - geometry.height()));
    return geometry;
}

} // namespace

void restoreWindow(QWindow& window)
{
    const QSettings settings;
    const QRect geometry = settings.value(geometryKey).toRect();
    const QScreen* screen = geometry.isValid() ? screenOf(geometry) : nullptr;
    if (screen)
        window.setGeometry(fitted(geometry, screen->availableGeometry()));
    if (settings.value(maximizedKey).toBool())
        window.setWindowStates(Qt::WindowMaximized);
}

void rememberWindow(const QWindow& window)
{
    QSettings settings;
    const bool isMaximized = window.windowStates() & Qt::WindowMaximized;
    settings.setValue(maximizedKey, isMaximized);
    // Of a maximised window the size before stays remembered.
    if (!isMaximized)
        settings.setValue(geometryKey, window.geometry());
}

} // namespace editor
