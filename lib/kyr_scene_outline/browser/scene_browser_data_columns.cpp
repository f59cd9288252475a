#include "checkable_proxy_model.h"
#include <kyr_scene_outline/scene_browser_data.h>

#include <KSelectionProxyModel>

using lumo::datamodels::proxy::BaseFilterProxyModel;

namespace {

int columnOrderRole(const QAbstractItemModel& columnsModel)
{
    return columnsModel.roleNames().key("columnOrder", Qt::DisplayRole);
}

} // namespace

QAbstractItemModel* SceneBrowserData::columnsModel() const
{
    return m_columnsModel;
}

QAbstractItemModel* SceneBrowserData::checkableColumnsModel() const
{
    return m_checkableColumnsModel.get();
}

QAbstractItemModel* SceneBrowserData::selectedColumnsModel() const
{
    return m_selectedColumnsModel.get();
}

void SceneBrowserData::setColumnsModel(QAbstractItemModel* columnsModel,
                                       QItemSelectionModel* selectionModel)
{
    m_columnsModel = columnsModel;

    m_columnsSelectionProxy = std::make_unique<KSelectionProxyModel>(selectionModel, nullptr);
    m_columnsSelectionProxy->setFilterBehavior(KSelectionProxyModel::ExactSelection);
    m_columnsSelectionProxy->setSourceModel(columnsModel);

    m_selectedColumnsModel = std::make_unique<BaseFilterProxyModel>(nullptr);
    m_selectedColumnsModel->setDynamicSortFilter(true);
    if (columnsModel)
        m_selectedColumnsModel->setSortRole(columnOrderRole(*columnsModel));
    m_selectedColumnsModel->setSourceModel(m_columnsSelectionProxy.get());
    m_selectedColumnsModel->sort(0, Qt::AscendingOrder);

    m_checkableProxy = std::make_unique<SceneBrowserCheckableProxyModel>();
    m_checkableProxy->setSourceModel(columnsModel);
    if (selectionModel)
        m_checkableProxy->setSelectionModel(selectionModel);

    m_checkableColumnsModel = std::make_unique<BaseFilterProxyModel>(nullptr);
    m_checkableColumnsModel->setDynamicSortFilter(true);
    m_checkableColumnsModel->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_checkableColumnsModel->setFilteringMode(BaseFilterProxyModel::FilteringMode::Branches);
    m_checkableColumnsModel->setSourceModel(m_checkableProxy.get());

    Q_EMIT columnsModelChanged();
}

void SceneBrowserData::setColumnsFilter(QString filter)
{
    if (m_checkableColumnsModel)
        m_checkableColumnsModel->setFilterFixedString(filter);
}

void SceneBrowserData::clearSelectedColumns()
{
    if (QItemSelectionModel* chosen =
            m_checkableProxy ? m_checkableProxy->selectionModel() : nullptr)
        chosen->clear();
}

void SceneBrowserData::removeFromSelectedColumns(const QModelIndexList& indexes)
{
    QItemSelectionModel* chosen = m_checkableProxy ? m_checkableProxy->selectionModel() : nullptr;
    if (!chosen)
        return;
    QItemSelection selection;
    for (const QModelIndex& index : indexes) {
        const QModelIndex column =
            m_columnsSelectionProxy->mapToSource(m_selectedColumnsModel->mapToSource(index));
        selection.merge(QItemSelection(column, column), QItemSelectionModel::Select);
    }
    chosen->select(selection, QItemSelectionModel::Deselect);
}

vex::Connection SceneBrowserData::connectShowColumnsDialog(std::function<void()> callback)
{
    return m_showColumnsDialog.connect(std::move(callback));
}

void SceneBrowserData::showColumnsDialog()
{
    m_showColumnsDialog();
}
