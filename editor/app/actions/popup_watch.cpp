#include "popup_watch.h"

#include <algorithm>

namespace editor {

namespace {

// The item of a popup in the overlay belongs to the popup itself.
bool takesKeys(const QQuickItem* item)
{
    const QObject* owner = item->parent();
    return owner && owner->inherits("QQuickPopup") && !owner->inherits("QQuickToolTip");
}

} // namespace

void PopupWatch::setOverlay(QQuickItem* overlay)
{
    if (overlay == m_overlay)
        return;
    if (m_overlay)
        m_overlay->disconnect(this);
    m_overlay = overlay;
    if (m_overlay)
        connect(m_overlay, &QQuickItem::childrenChanged, this, &PopupWatch::look);
    look();
    Q_EMIT overlayChanged();
}

void PopupWatch::look()
{
    const QList<QQuickItem*> items = m_overlay ? m_overlay->childItems() : QList<QQuickItem*>();
    const bool open = std::any_of(items.begin(), items.end(), takesKeys);
    if (open == m_open)
        return;
    m_open = open;
    Q_EMIT openChanged();
}

} // namespace editor
