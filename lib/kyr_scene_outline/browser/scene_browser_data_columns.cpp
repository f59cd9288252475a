#include "column_proxies.h"
#include <kyr_scene_outline/scene_browser_data.h>

#include <QPointer>

QAbstractItemModel* SceneBrowserData::columnsModel() const
{
    return m_columnsModel;
}

QAbstractItemModel* SceneBrowserData::checkableColumnsModel() const
{
    return m_columns ? m_columns->checkable() : nullptr;
}

QAbstractItemModel* SceneBrowserData::selectedColumnsModel() const
{
    return m_columns ? m_columns->selected() : nullptr;
}

void SceneBrowserData::setColumnsModel(QAbstractItemModel* columnsModel,
                                       QItemSelectionModel* selectionModel)
{
    const QPointer<SceneBrowserData> self(this);
    std::unique_ptr<kyr::ColumnProxies, RetireColumns> columns(
        new kyr::ColumnProxies(columnsModel, selectionModel));
    if (!self)
        return;
    m_columnsModel = columnsModel;
    m_columns = std::move(columns);
    const auto onEnd = [this](const QObject* mortal, auto replace) {
        if (mortal)
            connect(mortal, &QObject::destroyed, m_columns.get(),
                    [this, replace, watched = m_columns.get()] {
                        if (m_columns.get() == watched)
                            replace();
                    });
    };
    onEnd(columnsModel, [this] { setColumnsModel(nullptr, nullptr); });
    onEnd(selectionModel, [this] { setColumnsModel(m_columnsModel, nullptr); });
    Q_EMIT columnsModelChanged();
}

void SceneBrowserData::RetireColumns::operator()(kyr::ColumnProxies* columns) const
{
    kyr::ColumnProxies::retire(columns);
}

void SceneBrowserData::setColumnsFilter(QString filter)
{
    if (m_columns)
        m_columns->setFilter(filter);
}

void SceneBrowserData::clearSelectedColumns()
{
    if (QItemSelectionModel* chosen = m_columns ? m_columns->chosen() : nullptr)
        chosen->clear();
}

void SceneBrowserData::removeFromSelectedColumns(const QModelIndexList& indexes)
{
    QItemSelectionModel* chosen = m_columns ? m_columns->chosen() : nullptr;
    if (!chosen)
        return;
    QItemSelection selection;
    for (const QModelIndex& index : indexes) {
        const QModelIndex column = m_columns->columnOf(index);
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
