#pragma once

#include <host/ui/action.h>

#include <string>

namespace lumo {

/// A context menu that is filled and then shown. The actions stay their owners', who may destroy
/// them while the menu is shown: an entry keeps `Action::handle()` and then does nothing.
class IPopupMenu
{
public:
    virtual ~IPopupMenu() = default;

    /// Adds an entry. `text` replaces the action's own text unless it is empty.
    virtual void addAction(Action* action, const std::string& text) = 0;
    virtual void addSeparator() = 0;
    virtual bool isEmpty() const = 0;
    virtual void popup() = 0;
};

/// Where the browser gets its context menu from. Asked anew for each menu.
class IPopupMenuProvider
{
public:
    virtual ~IPopupMenuProvider() = default;

    /// The menu to fill, which may already hold entries; null when there is none.
    /// The menu stays the provider's.
    virtual IPopupMenu* popupMenu() = 0;
};

} // namespace lumo
