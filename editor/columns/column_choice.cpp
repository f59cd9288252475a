#include "column_choice.h"

#include <QSettings>

#include <algorithm>

namespace editor {

namespace {

const QString chosenKey = QStringLiteral("columns/chosen");
const QString defaultColumn = QStringLiteral("type");

int orderOf(const QModelIndex& column)
{
    return column.data(SceneColumnsModel::ColumnOrderRole).toInt();
}

} // namespace

ColumnChoice::ColumnChoice(SceneColumnsModel& columns, QObject* parent)
    : QItemSelectionModel(&columns, parent), m_columns(columns)
{
    restore();
    connect(this, &QItemSelectionModel::selectionChanged, this, &ColumnChoice::save);
    connect(&m_columns, &QAbstractItemModel::dataChanged, this, &ColumnChoice::save);
}

void ColumnChoice::select(const QItemSelection& selection,
                          QItemSelectionModel::SelectionFlags command)
{
    if (command & (Select | Toggle)) {
        // Before the selection tells anybody, so that nobody sees the column at another place.
        const QModelIndexList chosen = chosenColumns();
        int next = chosen.isEmpty() ? 0 : orderOf(chosen.last()) + 1;
        for (const QModelIndex& column : selection.indexes()) {
            if (!isSelected(column))
                m_columns.setData(column, next++, SceneColumnsModel::ColumnOrderRole);
        }
    }
    QItemSelectionModel::select(selection, command);
}

QModelIndexList ColumnChoice::chosenColumns() const
{
    QModelIndexList chosen = selectedIndexes();
    std::stable_sort(chosen.begin(), chosen.end(), [](const QModelIndex& a, const QModelIndex& b) {
        return orderOf(a) < orderOf(b);
    });
    return chosen;
}

void ColumnChoice::restore()
{
    const QStringList ids = QSettings().value(chosenKey, QStringList{defaultColumn}).toStringList();
    for (const QString& id : ids) {
        const QModelIndex column = m_columns.indexOf(id);
        if (column.isValid())
            select(column, Select);
    }
}

void ColumnChoice::save() const
{
    QStringList ids;
    for (const QModelIndex& column : chosenColumns())
        ids << column.data(SceneColumnsModel::ColumnIdRole).toString();
    QSettings().setValue(chosenKey, ids);
}

} // namespace editor
