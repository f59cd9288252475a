#include "row_editor.h"

#include "edit_scope.h"
#include "selected_rows.h"

#include <QPersistentModelIndex>
#include <QVariantMap>

namespace kyr::panel {

void RowEditor::setButton(int row, const QString& id, bool checked, const QString& text)
{
    const int role = m_outline ? m_outline->sourceRole("rowButtonsModel") : -1;
    if (role >= 0)
        setAll(row, role, QVariantMap{{id, checked}}, text);
}

bool RowEditor::setCell(int row, int role, const QVariant& value, const QString& text)
{
    return m_outline && setAll(row, role, value, text);
}

bool RowEditor::setAll(int row, int role, const QVariant& value, const QString& text)
{
    const QModelIndex clicked = m_outline->sourceIndex(row);
    if (!clicked.isValid())
        return false;
    std::vector<QPersistentModelIndex> rows;
    if (m_outline->isRowSelected(row))
        rows = selectedRows<QPersistentModelIndex>(*m_outline);
    else
        rows.emplace_back(clicked);
    const EditScope scope(*this, text);
    const QPersistentModelIndex first = clicked;
    if (!m_outline->sourceModel()->setData(clicked, value, role))
        return false;
    for (const QPersistentModelIndex& index : rows) {
        if (index.isValid() && index != first)
            m_outline->sourceModel()->setData(index, value, role);
    }
    return true;
}

bool RowEditor::canRename(int row) const
{
    const QModelIndex index = m_outline ? m_outline->sourceIndex(row) : QModelIndex();
    return index.isValid() && (index.flags() & Qt::ItemIsEditable) != 0;
}

bool RowEditor::rename(const QModelIndex& sourceIndex, const QString& name)
{
    if (!m_outline || !sourceIndex.isValid() || sourceIndex.model() != m_outline->sourceModel())
        return false;
    if (sourceIndex.data().toString() == name)
        return true;
    const EditScope scope(*this, tr("Rename"));
    return m_outline->sourceModel()->setData(sourceIndex, name, Qt::EditRole);
}

} // namespace kyr::panel
