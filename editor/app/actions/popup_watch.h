#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>

namespace editor {

/// Whether any popup but a tool tip is open in a window: a dialog, a menu, a list of choices. The
/// keyboard belongs to it then, and no shortcut of the window may act behind it.
class PopupWatch : public QObject
{
    Q_OBJECT
    /// The window's `Overlay.overlay`, whose children the open popups are.
    Q_PROPERTY(QQuickItem* overlay READ overlay WRITE setOverlay NOTIFY overlayChanged)
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)

public:
    using QObject::QObject;

    QQuickItem* overlay() const noexcept { return m_overlay; }
    void setOverlay(QQuickItem* overlay);
    bool isOpen() const noexcept { return m_open; }

Q_SIGNALS:
    void overlayChanged();
    void openChanged();

private:
    void look();

    QPointer<QQuickItem> m_overlay;
    bool m_open = false;
};

} // namespace editor
