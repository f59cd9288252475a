#include "editor_actions.h"

#include "editor_session.h"

namespace editor {

namespace {

void addWindowActions(ActionTable& table, EditorSession& session)
{
    WindowCommands* window = session.window();
    table.add("help", EditorSession::tr("&Mouse and Keys"), "F1", {"help", "help"},
              {[window] { Q_EMIT window->helpRequested(); }, {}, {}, {}});
    table.add("menu_bar", EditorSession::tr("Menu &Bar"), "F10", {"help", "help"},
              {[window] { Q_EMIT window->menuBarRequested(); }, {}, {}, {}});
}

} // namespace

void addEditorActions(ActionTable& table, EditorSession& session)
{
    table.addMenu("file", EditorSession::tr("&File"));
    table.addMenu("edit", EditorSession::tr("&Edit"));
    table.addMenu("add", EditorSession::tr("&Add"));
    table.addMenu("select", EditorSession::tr("&Select"));
    table.addMenu("view", EditorSession::tr("&View"));
    table.addMenu("help", EditorSession::tr("&Help"));
    addFileActions(table, session);
    addEditActions(table, session);
    addBuildActions(table, session);
    addSelectActions(table, session);
    addViewActions(table, session);
    addWindowActions(table, session);

    QObject::connect(session.selectionStatus(), &SelectionStatus::changed, &table,
                     &ActionTable::refreshLater);
    QObject::connect(session.undoStatus(), &UndoStatus::changed, &table,
                     &ActionTable::refreshLater);
    QObject::connect(session.document(), &SceneDocument::filePathChanged, &table,
                     &ActionTable::refreshLater);
    QObject::connect(session.document(), &SceneDocument::modifiedChanged, &table,
                     &ActionTable::refreshLater);
    QObject::connect(session.window(), &WindowCommands::stateChanged, &table,
                     &ActionTable::refreshLater);
    QObject::connect(session.view(), &ViewportBinding::isolatedChanged, &table,
                     &ActionTable::refreshLater);
    QObject::connect(session.theme(), &ThemeController::changed, &table,
                     &ActionTable::refreshLater);
}

} // namespace editor
