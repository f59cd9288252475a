#pragma once

#include <editor/app/actions/action_table.h>

namespace editor {

class EditorSession;

/// Fills the table with all that the editor can do, and keeps the commands' states in step with
/// selection, undo stack and document. Both live equally long.
void addEditorActions(ActionTable& table, EditorSession& session);

// The commands of one menu or two.
void addFileActions(ActionTable& table, EditorSession& session);
void addEditActions(ActionTable& table, EditorSession& session);
void addBuildActions(ActionTable& table, EditorSession& session);
void addSelectActions(ActionTable& table, EditorSession& session);
void addViewActions(ActionTable& table, EditorSession& session);

} // namespace editor
