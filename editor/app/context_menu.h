#pragma once

#include <host/ui/widget_popup_menu.h>

#include <memory>

namespace editor {

class EditCommands;
class SelectionStatus;

/// Context menus that hold the editor's own commands before those of who asks for the menu.
/// Both must outlive the provider's menus.
std::shared_ptr<lumo::WidgetPopupMenuProvider>
makeContextMenuProvider(EditCommands& commands, const SelectionStatus& selection);

} // namespace editor
