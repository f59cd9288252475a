#include <kyr_scene_outline/scene_browser_data.h>

#include "row_object.h"
#include "scoped_flag.h"

#include <kyr_scene_outline/selection/row_selection_model.h>
#include <kyr_scene_outline/selection/selectable_cell.h>

#include <host/core/profiler.h>
#include <host/undo/commit_changes_scope.h>

#include <QPointer>

#include <optional>

namespace {

using kyr::selection::canBeSelected;

// The objects of the cells that `QItemSelection::indexes` would list, in its order.
IAssetSelection::Objects objectsOf(const QItemSelection& selection)
{
    IAssetSelection::Objects objects;
    objects.reserve(std::size_t(selection.size()));
    for (const QItemSelectionRange& range : selection) {
        const QAbstractItemModel* model = range.model();
        const QModelIndex parent = range.parent();
        for (int row = range.top(); row <= range.bottom(); ++row) {
            for (int column = range.left(); column <= range.right(); ++column) {
                const QModelIndex cell = model->index(row, column, parent);
                if (canBeSelected(cell))
                    objects.emplace_back(kyr::objectOf(cell));
            }
        }
    }
    return objects;
}

/// Every row of a model: one range per parent, the ranges of its descendants first. Walks with a
/// stack of its own, so the depth of a scene is not limited by the thread's.
QItemSelection allRows(const QAbstractItemModel& model)
{
    struct Level
    {
        QModelIndex parent;
        int rows;
        int next;
    };
    QItemSelection selection;
    std::vector<Level> levels{{QModelIndex(), model.rowCount(), 0}};
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next < level.rows) {
            const QModelIndex row = model.index(level.next++, 0, level.parent);
            // A row without an index would be the root again, without end.
            if (const int children = row.isValid() ? model.rowCount(row) : 0; children > 0)
                levels.push_back({row, children, 0});
            continue;
        }
        // Ranges under different parents share no cells, so appending is merging.
        const QModelIndex first = model.index(0, 0, level.parent);
        const QModelIndex last = model.index(level.rows - 1, 0, level.parent);
        if (level.rows == 1 && first.isValid())
            selection.append(QItemSelectionRange(first)); // one look-up less
        else if (first.isValid() && last.isValid())
            selection.append(QItemSelectionRange(first, last));
        levels.pop_back();
    }
    return selection;
}

} // namespace

void SceneBrowserData::updateAssetSelection(const QItemSelection& selection)
{
    if (m_updatingSelection || !m_assetSelection)
        return;
    const QPointer<SceneBrowserData> self(this);
    IAssetSelection& assetSelection = *m_assetSelection;
    // The change closes after the flag is cleared: what is notified then is no echo.
    std::shared_ptr<Zar::ChangesController> controller;
    std::optional<Zar::CommitChangesScope> change;
    {
        const kyr::ScopedFlag updating(m_updatingSelection, this);
        IAssetSelection::Objects objects = objectsOf(selection);
        if (!self)
            return;
        controller = assetSelection.changesController().lock();
        if (!self)
            return;
        change.emplace("Set asset selection", controller.get());
        assetSelection.setSelection(std::move(objects), false);
    }
}

void SceneBrowserData::updateSelectionModelFromAssetSelection()
{
    const vex::Profiler::Scope profiled("SceneBrowserData::updateSelectionModelFromAssetSelection");
    // The selection may notify before there are rows to select: while it is being subscribed to.
    if (m_updatingSelection || !m_selectionModel)
        return;
    const QPointer<SceneBrowserData> self(this);
    const kyr::ScopedFlag updating(m_updatingSelection, this);
    QItemSelection selection;
    // The list is asked anew each time: the editor may change it when it looks for a row.
    for (std::size_t i = 0;; ++i) {
        const IAssetSelection::Objects& objects = m_assetSelection->objects();
        if (!self)
            return;
        if (i >= objects.size())
            break;
        const kyr::PersistentObject object = objects[i];
        const QModelIndex index = m_assetModel->indexOf(object.object());
        if (!self)
            return;
        if (index.isValid())
            selection.append(QItemSelectionRange(index));
    }
    m_selectionModel->select(selection, QItemSelectionModel::ClearAndSelect);
}

void SceneBrowserData::updateSelectionModel()
{
    const QPointer<SceneBrowserData> self(this);
    {
        const kyr::ScopedFlag updating(m_updatingSelection, this);
        m_selectionModel->clear();
    }
    if (self && m_assetSelection)
        updateSelectionModelFromAssetSelection();
}

void SceneBrowserData::syncSelectionOnInsert(const QModelIndex& rowParent, int first, int last)
{
    if (m_updatingSelection || !m_assetSelection)
        return;
    const QPointer<SceneBrowserData> self(this);
    if (m_assetSelection->objects().empty() || !self)
        return;
    const kyr::ScopedFlag updating(m_updatingSelection, this);
    const QAbstractItemModel* itemModel = m_assetModel->itemModel();
    if (!self)
        return;
    QItemSelection selection;
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = itemModel->index(row, 0, rowParent);
        const kyr::ReflectedObject object = kyr::objectOf(index);
        if (self && object.isValid() && m_assetSelection->isSelected(object))
            selection.append(QItemSelectionRange(index));
        if (!self)
            return;
    }
    if (!selection.isEmpty())
        m_selectionModel->select(selection, QItemSelectionModel::Select);
}

void SceneBrowserData::selectAll()
{
    const QPointer<SceneBrowserData> self(this);
    const QAbstractItemModel* itemModel = model();
    if (!self || !itemModel || !m_selectionModel)
        return;
    const QItemSelection rows = allRows(*itemModel);
    if (self)
        m_selectionModel->select(rows, QItemSelectionModel::ClearAndSelect);
}
