#pragma once

#include <host/ui/popup_menu.h>

#include <QPoint>

#include <functional>
#include <memory>
#include <optional>

class QMenu;

namespace lumo {

/// Popup menus shown by the widget toolkit, at the pointer unless told otherwise. Needs a
/// QApplication.
class WidgetPopupMenuProvider : public IPopupMenuProvider
{
public:
    /// Called on every new menu, to put the editor's own entries first.
    using Populate = std::function<void(QMenu&)>;

    explicit WidgetPopupMenuProvider(Populate populate = {});
    ~WidgetPopupMenuProvider() override;

    /// A new menu; the one handed out before is closed and deleted.
    IPopupMenu* popupMenu() override;
    /// Where on the screen the next menu shows: at what the keyboard is at, say.
    void showNextAt(const QPoint& place) { m_place = place; }

private:
    class Menu;
    Populate m_populate;
    std::unique_ptr<Menu> m_menu;
    std::optional<QPoint> m_place;
};

} // namespace lumo
