#pragma once

#include <host/ui/popup_menu.h>

#include <functional>
#include <memory>

class QMenu;

namespace lumo {

/// Popup menus shown at the pointer by the widget toolkit. Needs a QApplication.
class WidgetPopupMenuProvider : public IPopupMenuProvider
{
public:
    /// Called on every new menu, to put the editor's own entries first.
    using Populate = std::function<void(QMenu&)>;

    explicit WidgetPopupMenuProvider(Populate populate = {});
    ~WidgetPopupMenuProvider() override;

    /// A new menu; the one handed out before is closed and deleted.
    IPopupMenu* popupMenu() override;

private:
    class Menu;
    Populate m_populate;
    std::unique_ptr<Menu> m_menu;
};

} // namespace lumo
