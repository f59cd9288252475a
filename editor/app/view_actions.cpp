#include "editor_actions.h"
#include "editor_session.h"

namespace editor {

void addSelectActions(ActionTable& table, EditorSession& session)
{
    EditCommands* edit = session.edit();
    WindowCommands* window = session.window();
    const SelectionStatus* status = session.selectionStatus();
    const auto hasSelection = [status] { return status->count() > 0; };
    table.add("select_all", EditCommands::tr("Select &All in Scene"), "Ctrl+A", {"select", "all"},
              {[edit] { edit->selectAll(); }, {}, {}, {}});
    table.add("select_none", EditCommands::tr("Select &None"), "Ctrl+Shift+D", {"select", "all"},
              {[edit] { edit->selectNone(); }, hasSelection, {}, {}});
    table.add("invert_selection", EditCommands::tr("&Invert Selection"), "Ctrl+I",
              {"select", "all"}, {[edit] { edit->invertSelection(); }, {}, {}, {}});
    table.add("select_children", EditCommands::tr("Select &Children"), "Ctrl+Shift+A",
              {"select", "related"},
              {[edit] { edit->selectChildren(); },
               [status] { return status->primary() && !status->primary()->children().empty(); },
               {},
               {}});
    table.add("select_parent", EditCommands::tr("Select &Parent"), "Ctrl+P", {"select", "related"},
              {[edit] { edit->selectParents(); },
               [status] { return status->primary() && status->primary()->parent(); },
               {},
               {}});
    table.add("select_same_type", EditCommands::tr("Select Same &Type"), "Ctrl+T",
              {"select", "related"}, {[edit] { edit->selectSameType(); }, hasSelection, {}, {}});
    table.add("selection_sets", EditCommands::tr("Selection &Sets…"), "Ctrl+Alt+S",
              {"select", "sets"},
              {[window] { Q_EMIT window->selectionSetsRequested(); }, {}, {}, {}});
    table.add("find", EditCommands::tr("&Find in Tree"), "Ctrl+F", {"select", "find"},
              {[window] { Q_EMIT window->findRequested(); }, {}, {}, {}});
}

void addViewActions(ActionTable& table, EditorSession& session)
{
    ViewportBinding* view = session.view();
    WindowCommands* window = session.window();
    ThemeController* theme = session.theme();
    SceneBrowserData* browser = session.browser();
    const auto hasSelection = [status = session.selectionStatus()] { return status->count() > 0; };
    table.add("frame", EditorSession::tr("&Frame Selection"), "Ctrl+Shift+F", {"view", "camera"},
              {[view] { view->frameSelection(); }, hasSelection, {}, {}});
    table.add("frame_all", EditorSession::tr("Frame &All"), "Ctrl+Home", {"view", "camera"},
              {[view] { view->frameAll(); }, {}, {}, {}});
    table.addCheckable("isolate", EditorSession::tr("&Isolate Selection"), "Ctrl+Shift+I",
                       {"view", "camera"},
                       {[view] { view->toggleIsolation(); },
                        [view, hasSelection] { return view->isIsolated() || hasSelection(); },
                        [view] { return view->isIsolated(); },
                        {}});
    table.add("reveal", EditorSession::tr("&Reveal Selection in Tree"), "Ctrl+R", {"view", "tree"},
              {[window] { Q_EMIT window->revealRequested(); }, hasSelection, {}, {}});
    table.addCheckable("always_reveal", EditorSession::tr("Al&ways Reveal Selection"), "",
                       {"view", "tree"},
                       {[window] { window->toggleAlwaysReveal(); },
                        {},
                        [window] { return window->alwaysReveal(); },
                        {}});
    table.add("expand_all", EditorSession::tr("&Expand All"), "", {"view", "branches"},
              {[browser] { browser->expandAll(); }, {}, {}, {}});
    table.add("collapse_all", EditorSession::tr("&Collapse All"), "", {"view", "branches"},
              {[browser] { browser->collapseAll(); }, {}, {}, {}});
    table.addCheckable(
        "log", EditorSession::tr("&Log"), "Ctrl+L", {"view", "window"},
        {[window] { window->toggleLog(); }, {}, [window] { return window->isLogShown(); }, {}});
    table.addCheckable("operation_times", EditorSession::tr("Operation &Times"), "",
                       {"view", "window"},
                       {[window] { window->toggleOperationTimes(); },
                        {},
                        [window] { return window->areOperationTimesShown(); },
                        {}});
    table.addCheckable("dark_theme", EditorSession::tr("&Dark Theme"), "", {"view", "window"},
                       {[theme] { theme->setDark(!theme->isDark()); },
                        {},
                        [theme] { return theme->isDark(); },
                        {}});
}

} // namespace editor
