#pragma once

#include <host/ui/widget_popup_menu.h>

#include <memory>

namespace editor {

class ActionTable;

/// Context menus that hold what of the editor's own commands the selection allows, before those of
/// who asks for the menu. The table must outlive the provider's menus.
std::shared_ptr<lumo::WidgetPopupMenuProvider> makeContextMenuProvider(ActionTable& table);

} // namespace editor
