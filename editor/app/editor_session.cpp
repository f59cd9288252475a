#include "editor_session.h"

#include "context_menu.h"
#include "editor_actions.h"
#include "gizmo_settings.h"

#include <QFileInfo>

namespace editor {

EditorSession::EditorSession(QObject* parent)
    : QObject(parent)
    , m_selection(m_document.changesController())
    , m_assetModel(m_document)
    , m_browser(&m_assetModel, &m_selection, nullptr)
    , m_view(m_document, m_selection)
    , m_gizmo(m_document, m_selection, *m_view.controller())
    , m_inspector(m_document, m_selection)
    , m_selectionStatus(m_document, m_selection)
    , m_undoStatus(m_document.undoStack())
    , m_loader(m_document)
    , m_files(m_document, m_loader)
    , m_exporter(m_document)
    , m_recovery(m_document, m_loader, m_files)
    , m_edit(m_document, m_selection, m_browser, m_hiddenQuestion, m_task)
    , m_build(m_document, m_selection, *m_view.controller(), m_task)
    , m_batchRename(m_document, m_selection)
    , m_sceneMemory(m_document, *m_view.controller())
    , m_menus(makeContextMenuProvider(m_actions))
{
    followFiles();
    keepGizmoSettings(*viewport()->gizmo());
    addEditorActions(m_actions, *this);
    measureOperations();
    m_browser.setPopupMenuProvider(m_menus);
    for (const QModelIndex& column : m_columns.columns()) {
        m_filter.setTitle(column.data(SceneColumnsModel::ValueRole).toInt(),
                          column.data().toString());
    }
    m_browser.setFilterPredicate(&m_filter);
    m_browser.setColumnsModel(&m_columns, &m_chosenColumns);
    m_columnChooserRequested =
        m_browser.connectShowColumnsDialog([this] { Q_EMIT columnChooserRequested(); });
    connect(&m_document, &SceneDocument::aboutToReset, this, [this] {
        m_selection.setHoveredObjects({});
        m_selection.clearSelection();
    });
    connect(&m_exporter, &SceneExport::exported, this, [this](const QString& path) {
        // Over the file that was imported: that is nobody else's change.
        if (path == m_document.filePath())
            m_files.keepMine();
    });
    connect(&m_assetModel, &SceneAssetModel::activated, this,
            [this](SceneObject* object) { m_view.frame(*object); });
    connect(&m_view, &ViewportBinding::contextMenuRequested, &m_browser,
            &SceneBrowserData::requestMenu);
}

EditorSession::~EditorSession()
{
    m_sceneMemory.remember();
}

void EditorSession::followFiles()
{
    connect(&m_document, &SceneDocument::filePathChanged, this, [this] {
        if (!m_recovery.isRecovering(m_document.filePath()))
            m_recent.add(m_document.filePath());
        m_openMark.follow(m_document.filePath());
    });
    connect(&m_loader, &LoadController::opening, this,
            [](SceneObject* root, const QString& path) { SceneMemory::restoreRows(*root, path); });
    connect(
        &m_loader, &LoadController::itemsPrepared, this,
        [this](const std::shared_ptr<PreparedItems>& items) { m_view.prepare(std::move(*items)); });
    connect(&m_loader, &LoadController::loaded, &m_sceneMemory, &SceneMemory::restoreCamera);
    connect(&m_loader, &LoadController::failed, this, [this](const QString& path) {
        if (!QFileInfo::exists(path))
            m_recent.remove(path);
    });
    connect(&m_openMark, &OpenFileMark::openElsewhere, this, &EditorSession::openElsewhere);
}

void EditorSession::measureOperations()
{
    const auto follow = [this] { m_operations.setActive(m_window.areOperationTimesShown()); };
    connect(&m_window, &WindowCommands::stateChanged, &m_operations, follow);
    follow();
    connect(&m_document, &SceneDocument::aboutToReset, &m_window,
            [this] { m_window.setSceneMeasured(false); });
    connect(&m_loader, &LoadController::loaded, &m_window,
            [this](const QString& path) { m_window.setSceneMeasured(path.isEmpty()); });
    connect(&m_actions, &ActionTable::triggered, &m_operations,
            [this](const EditorAction* action) { m_operations.describe(action->plainText()); });
    connect(&m_document.undoStack(), &QUndoStack::indexChanged, &m_operations, [this] {
        if (m_document.undoStack().canUndo())
            m_operations.describe(m_document.undoStack().undoText());
    });
}

void EditorSession::beginStep(const QString& name)
{
    m_step.emplace(name.toStdString(), m_document.changesController().get(),
                   Zar::CommitChangesScope::CareFlag::YieldName);
}

} // namespace editor
