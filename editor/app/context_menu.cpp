#include "context_menu.h"

#include "edit_commands.h"
#include "selection_status.h"

#include <QMenu>

namespace editor {

std::shared_ptr<lumo::WidgetPopupMenuProvider>
makeContextMenuProvider(EditCommands& commands, const SelectionStatus& selection)
{
    return std::make_shared<lumo::WidgetPopupMenuProvider>([&commands, &selection](QMenu& menu) {
        const auto add = [&](const QString& text, const char* shortcut,
                             void (EditCommands::*command)()) {
            QAction* action = menu.addAction(text, &commands, command);
            action->setShortcut(QKeySequence(QLatin1String(shortcut)));
            action->setEnabled(selection.count() > 0);
        };
        add(EditCommands::tr("Copy Properties"), "Ctrl+Shift+C", &EditCommands::copyProperties);
        add(EditCommands::tr("Paste Properties"), "Ctrl+Shift+V", &EditCommands::pasteProperties);
        menu.addSeparator();
        add(EditCommands::tr("Duplicate"), "Ctrl+D", &EditCommands::duplicateSelected);
        add(EditCommands::tr("Delete"), "Del", &EditCommands::removeSelected);
        add(EditCommands::tr("Select Children"), "Ctrl+Shift+A", &EditCommands::selectChildren);
        menu.addSeparator();
    });
}

} // namespace editor
