#pragma once

#include <editor/app/batch_rename.h>
#include <editor/app/build_commands.h>
#include <editor/app/edit_commands.h>
#include <editor/app/file_commands.h>
#include <editor/app/gizmo_edit.h>
#include <editor/app/inspector_model.h>
#include <editor/app/load_controller.h>
#include <editor/app/log_model.h>
#include <editor/app/open_file_mark.h>
#include <editor/app/operation_times.h>
#include <editor/app/recent_files.h>
#include <editor/app/recovery_journal.h>
#include <editor/app/scene_export.h>
#include <editor/app/scene_memory.h>
#include <editor/app/selection_status.h>
#include <editor/app/theme_controller.h>
#include <editor/app/undo_status.h>
#include <editor/app/viewport_binding.h>
#include <editor/app/window_commands.h>

#include <editor/app/actions/action_table.h>
#include <editor/columns/column_choice.h>
#include <editor/rows/scene_asset_model.h>
#include <host/scene/recorded_asset_selection.h>
#include <host/ui/widget_popup_menu.h>
#include <host/undo/commit_changes_scope.h>
#include <kyr_scene_outline/scene_browser_data.h>

#include <optional>

namespace editor {

/// One open editor without its window: the scene, the selection that all views share, and what
/// each view binds to.
class EditorSession final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(editor::SceneDocument* document READ document CONSTANT)
    Q_PROPERTY(SceneBrowserData* browser READ browser CONSTANT)
    Q_PROPERTY(editor::ViewportBinding* view READ view CONSTANT)
    Q_PROPERTY(editor::ViewportController* viewport READ viewport CONSTANT)
    Q_PROPERTY(editor::InspectorModel* inspector READ inspector CONSTANT)
    Q_PROPERTY(editor::SelectionStatus* selectionStatus READ selectionStatus CONSTANT)
    Q_PROPERTY(editor::UndoStatus* undoStatus READ undoStatus CONSTANT)
    Q_PROPERTY(editor::LoadController* loader READ loader CONSTANT)
    Q_PROPERTY(editor::FileCommands* files READ files CONSTANT)
    Q_PROPERTY(editor::RecoveryJournal* recovery READ recovery CONSTANT)
    Q_PROPERTY(editor::SceneExport* exporter READ exporter CONSTANT)
    Q_PROPERTY(editor::EditCommands* edit READ edit CONSTANT)
    Q_PROPERTY(editor::HiddenQuestion* hiddenQuestion READ hiddenQuestion CONSTANT)
    Q_PROPERTY(editor::BuildCommands* build READ build CONSTANT)
    Q_PROPERTY(editor::BatchRename* batchRename READ batchRename CONSTANT)
    Q_PROPERTY(editor::LongTask* task READ task CONSTANT)
    Q_PROPERTY(editor::LogModel* log READ log CONSTANT)
    Q_PROPERTY(editor::ThemeController* theme READ theme CONSTANT)
    Q_PROPERTY(editor::RecentFiles* recent READ recent CONSTANT)
    Q_PROPERTY(editor::WindowCommands* window READ window CONSTANT)
    Q_PROPERTY(editor::OperationTimes* operations READ operations CONSTANT)
    Q_PROPERTY(editor::ActionTable* actions READ actions CONSTANT)

public:
    explicit EditorSession(QObject* parent = nullptr);
    ~EditorSession() override;

    SceneDocument* document() { return &m_document; }
    IAssetSelection& selection() { return m_selection; }
    SceneAssetModel& assetModel() { return m_assetModel; }
    SceneBrowserData* browser() { return &m_browser; }
    ViewportBinding* view() { return &m_view; }
    ViewportController* viewport() { return m_view.controller(); }
    InspectorModel* inspector() { return &m_inspector; }
    SelectionStatus* selectionStatus() { return &m_selectionStatus; }
    UndoStatus* undoStatus() { return &m_undoStatus; }
    LoadController* loader() { return &m_loader; }
    FileCommands* files() { return &m_files; }
    RecoveryJournal* recovery() { return &m_recovery; }
    SceneExport* exporter() { return &m_exporter; }
    EditCommands* edit() { return &m_edit; }
    HiddenQuestion* hiddenQuestion() { return &m_hiddenQuestion; }
    BuildCommands* build() { return &m_build; }
    BatchRename* batchRename() { return &m_batchRename; }
    LongTask* task() { return &m_task; }
    LogModel* log() { return &m_log; }
    ThemeController* theme() { return &m_theme; }
    RecentFiles* recent() { return &m_recent; }
    WindowCommands* window() { return &m_window; }
    OperationTimes* operations() { return &m_operations; }
    ActionTable* actions() { return &m_actions; }

    /// Makes all edits until `endStep` one undo step, which is called what they are: "Rename Lamp".
    /// Several of one kind are counted behind `name`.
    Q_INVOKABLE void beginStep(const QString& name);
    Q_INVOKABLE void endStep() { m_step.reset(); }
    /// The next context menu shows there on the screen, and not at the pointer.
    Q_INVOKABLE void showMenuAt(const QPoint& place) { m_menus->showNextAt(place); }

Q_SIGNALS:
    /// The panel asks for the dialog to choose columns in.
    void columnChooserRequested();
    /// Another editor of this user, the process of that number, has the opened file open as well.
    void openElsewhere(const QString& path, qint64 process);

private:
    void followFiles();
    void measureOperations();

    // Later members use earlier ones.
    ThemeController m_theme;
    LogModel m_log;
    SceneDocument m_document;
    RecordedAssetSelection m_selection;
    SceneAssetModel m_assetModel;
    SceneColumnsModel m_columns;
    ColumnChoice m_chosenColumns{m_columns};
    lumo::datamodels::proxy::TextPredicate m_filter;
    SceneBrowserData m_browser;
    ViewportBinding m_view;
    GizmoEdit m_gizmo;
    InspectorModel m_inspector;
    SelectionStatus m_selectionStatus;
    UndoStatus m_undoStatus;
    LoadController m_loader;
    FileCommands m_files;
    SceneExport m_exporter;
    RecoveryJournal m_recovery;
    LongTask m_task;
    HiddenQuestion m_hiddenQuestion;
    EditCommands m_edit;
    BuildCommands m_build;
    BatchRename m_batchRename;
    RecentFiles m_recent;
    OpenFileMark m_openMark;
    SceneMemory m_sceneMemory;
    WindowCommands m_window;
    OperationTimes m_operations;
    ActionTable m_actions;
    std::shared_ptr<lumo::WidgetPopupMenuProvider> m_menus;
    vex::Connection m_columnChooserRequested;
    std::optional<Zar::CommitChangesScope> m_step;
};

} // namespace editor
