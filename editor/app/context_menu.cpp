#include "context_menu.h"

#include <editor/app/actions/action_table.h>

#include <QMenu>

namespace editor {

namespace {

// In their order; an empty one is a line.
constexpr const char* entries[] = {
    "rename",
    "rename_many",
    "frame",
    "reveal",
    "", //
    "hide",
    "lock",
    "isolate",
    "", //
    "group",
    "ungroup",
    "", //
    "select_children",
    "select_parent",
    "select_same_type",
    "", //
    "cut",
    "copy",
    "paste",
    "duplicate",
    "delete",
    "", //
    "copy_properties",
    "paste_properties",
    "paste_special",
};

void addEntry(QMenu& menu, EditorAction& action)
{
    QAction* entry = menu.addAction(action.text(), &action, &EditorAction::trigger);
    entry->setObjectName(action.identifier());
    entry->setShortcut(action.shortcut());
}

} // namespace

std::shared_ptr<lumo::WidgetPopupMenuProvider> makeContextMenuProvider(ActionTable& table)
{
    return std::make_shared<lumo::WidgetPopupMenuProvider>([&table](QMenu& menu) {
        table.refresh();
        for (const char* identifier : entries) {
            EditorAction* action = table.find(QLatin1String(identifier));
            if (*identifier == '\0')
                menu.addSeparator();
            else if (action && action->isEnabled())
                addEntry(menu, *action);
        }
    });
}

} // namespace editor
