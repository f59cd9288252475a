#include "editor_actions.h"
#include "editor_session.h"

namespace editor {

namespace {

/// "Undo Rename A&B" as menus take it, where "&" marks a mnemonic.
QString withStep(const QString& text, QString step)
{
    return step.isEmpty() ? text : text + QLatin1Char(' ') + step.replace('&', QLatin1String("&&"));
}

QString withoutMnemonic(QString text)
{
    return text.remove(QLatin1Char('&'));
}

/// A command on all selected objects, which asks first when the tree hides some of them.
std::function<void()> asking(EditorSession& session, const QString& text, std::function<void()> run)
{
    HiddenQuestion* question = session.hiddenQuestion();
    return [question, command = withoutMnemonic(text), run = std::move(run)] {
        question->ask(command, run);
    };
}

void addHistoryActions(ActionTable& table, EditorSession& session)
{
    UndoStatus* undo = session.undoStatus();
    table.add("undo", EditCommands::tr("&Undo"), "Ctrl+Z", {"edit", "history"},
              {[undo] { undo->undo(); },
               [undo] { return undo->canUndo(); },
               {},
               [undo] { return withStep(EditCommands::tr("&Undo"), undo->undoName()); }});
    table.add("redo", EditCommands::tr("&Redo"), "Ctrl+Shift+Z; Ctrl+Y", {"edit", "history"},
              {[undo] { undo->redo(); },
               [undo] { return undo->canRedo(); },
               {},
               [undo] { return withStep(EditCommands::tr("&Redo"), undo->redoName()); }});
}

void addClipboardActions(ActionTable& table, EditorSession& session)
{
    BuildCommands* build = session.build();
    const SelectionStatus* status = session.selectionStatus();
    const auto hasObjects = [status] { return status->hasOtherThanRoot(); };
    const QString cut = EditCommands::tr("Cu&t");
    table.add("cut", cut, "Ctrl+X", {"edit", "clipboard"},
              {asking(session, cut, [build] { build->cutObjects(); }), hasObjects, {}, {}});
    table.add("copy", EditCommands::tr("&Copy"), "Ctrl+C", {"edit", "clipboard"},
              {[build] { build->copyObjects(); }, hasObjects, {}, {}});
    table.add("paste", EditCommands::tr("&Paste"), "Ctrl+V", {"edit", "clipboard"},
              {[build] { build->pasteObjects(); }, {}, {}, {}});
    EditCommands* edit = session.edit();
    const QString duplicate = EditCommands::tr("&Duplicate");
    table.add(
        "duplicate", duplicate, "Ctrl+D", {"edit", "clipboard"},
        {asking(session, duplicate, [edit] { edit->duplicateSelected(); }), hasObjects, {}, {}});
    const QString remove = EditCommands::tr("D&elete");
    table.add("delete", remove, "Del", {"edit", "clipboard"},
              {asking(session, remove, [edit] { edit->removeSelected(); }), hasObjects, {}, {}});
}

void addPropertyActions(ActionTable& table, EditorSession& session)
{
    EditCommands* edit = session.edit();
    const auto hasSelection = [&session] { return session.selectionStatus()->count() > 0; };
    table.add("copy_properties", EditCommands::tr("Copy P&roperties"), "Ctrl+Shift+C",
              {"edit", "properties"}, {[edit] { edit->copyProperties(); }, hasSelection, {}, {}});
    table.add("paste_properties", EditCommands::tr("Paste Pr&operties"), "Ctrl+Shift+V",
              {"edit", "properties"}, {[edit] { edit->pasteProperties(); }, hasSelection, {}, {}});
    table.add("paste_special", EditCommands::tr("Paste &Special…"), "Ctrl+Alt+V",
              {"edit", "properties"},
              {[edit] { edit->preparePasteSpecial(); }, hasSelection, {}, {}});
}

/// A command on a flag of the selected objects, which takes the value that the primary one has not.
void addFlagAction(ActionTable& table, EditorSession& session, const char* identifier,
                   const char* shortcut, bool (*isOn)(const SceneObject&),
                   void (EditCommands::*setOn)(bool), const QString& onText, const QString& offText)
{
    const auto primaryIsOn = [&session, isOn] {
        const SceneObject* primary = session.selectionStatus()->primary();
        return primary && isOn(*primary);
    };
    const auto text = [=] { return primaryIsOn() ? offText : onText; };
    const auto run = [&session, setOn, primaryIsOn, text] {
        const auto set = [edit = session.edit(), setOn, on = !primaryIsOn()] {
            (edit->*setOn)(on);
        };
        session.hiddenQuestion()->ask(withoutMnemonic(text()), set);
    };
    table.add(
        identifier, onText, shortcut, {"edit", "objects"},
        {run, [&session] { return session.selectionStatus()->primary() != nullptr; }, {}, text});
}

void addObjectActions(ActionTable& table, EditorSession& session)
{
    WindowCommands* window = session.window();
    const SelectionStatus* status = session.selectionStatus();
    table.add("rename", EditCommands::tr("Rena&me"), "F2", {"edit", "objects"},
              {[window] { Q_EMIT window->renameRequested(); },
               [status] { return status->count() > 0; },
               {},
               {}});
    addFlagAction(
        table, session, "hide", "Ctrl+H", [](const SceneObject& o) { return !o.isVisible(); },
        &EditCommands::setSelectedHidden, EditCommands::tr("&Hide"), EditCommands::tr("S&how"));
    addFlagAction(
        table, session, "lock", "Ctrl+Shift+L", [](const SceneObject& o) { return o.isLocked(); },
        &EditCommands::setSelectedLocked, EditCommands::tr("&Lock"), EditCommands::tr("Un&lock"));
    BuildCommands* build = session.build();
    const QString renameMany = EditCommands::tr("Rename &Several…");
    table.add("rename_many", renameMany, "Ctrl+Shift+R", {"edit", "objects"},
              {asking(session, renameMany, [window] { Q_EMIT window->batchRenameRequested(); }),
               [status] { return status->count() > 0; },
               {},
               {}});
    const QString group = EditCommands::tr("&Group");
    table.add("group", group, "Ctrl+G", {"edit", "tree"},
              {asking(session, group, [build] { build->group(); }),
               [status] { return status->hasOtherThanRoot(); },
               {},
               {}});
    const QString ungroup = EditCommands::tr("U&ngroup");
    table.add(
        "ungroup", ungroup, "Ctrl+Shift+G", {"edit", "tree"},
        {asking(session, ungroup, [build] { build->ungroup(); }),
         [status] { return status->primary() && status->primary()->kind() == ObjectKind::Group; },
         {},
         {}});
}

} // namespace

void addEditActions(ActionTable& table, EditorSession& session)
{
    addHistoryActions(table, session);
    addClipboardActions(table, session);
    addPropertyActions(table, session);
    addObjectActions(table, session);
}

} // namespace editor
