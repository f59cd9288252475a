#include "tree_navigator.h"

#include <QScopedValueRollback>

namespace kyr::panel {

namespace {

using Selection = QItemSelectionModel;

bool has(int modifiers, Qt::KeyboardModifier modifier)
{
    return (modifiers & modifier) != 0;
}

} // namespace

TreeNavigator::TreeNavigator(QObject* parent) : QObject(parent) {}

void TreeNavigator::setFlatModel(OutlineModel* model)
{
    if (model == m_flat)
        return;
    m_flat = model;
    m_anchor = QPersistentModelIndex();
    m_typeAhead.stop();
    Q_EMIT flatModelChanged();
}

QItemSelectionModel* TreeNavigator::selectionModel() const
{
    QItemSelectionModel* selection = m_flat ? m_flat->selectionModel() : nullptr;
    return selection && selection->model() == m_flat->sourceModel() ? selection : nullptr;
}

int TreeNavigator::currentRow() const
{
    return selectionModel() ? m_flat->currentRow() : -1;
}

QModelIndex TreeNavigator::primaryIndex() const
{
    if (!selectionModel())
        return {};
    const QItemSelection selection = selectionModel()->selection();
    for (auto range = selection.crbegin(); range != selection.crend(); ++range) {
        if (range->isValid())
            return range->bottomRight().sibling(range->bottom(), 0);
    }
    return {};
}

void TreeNavigator::select(int first, int last, Selection::SelectionFlags flags)
{
    const QScopedValueRollback<bool> guard(m_changing, true);
    selectionModel()->select(m_flat->sourceSelection(first, last), flags);
}

void TreeNavigator::focus(int row)
{
    const QScopedValueRollback<bool> guard(m_changing, true);
    m_flat->setCurrentRow(row);
}

void TreeNavigator::setAnchor(int row)
{
    m_anchor = m_flat->sourceIndex(row);
}

void TreeNavigator::extendTo(int row, bool keepOthers)
{
    int anchor = m_flat->nearestRow(m_anchor);
    if (anchor < 0)
        anchor = currentRow() < 0 ? row : currentRow();
    setAnchor(anchor);
    select(qMin(anchor, row), qMax(anchor, row),
           keepOthers ? Selection::Select : Selection::ClearAndSelect);
    focus(row);
}

void TreeNavigator::press(int row, int modifiers)
{
    if (!selectionModel() || row < 0 || row >= m_flat->count())
        return;
    m_typeAhead.stop();
    if (has(modifiers, Qt::ShiftModifier)) {
        extendTo(row, has(modifiers, Qt::ControlModifier));
        return;
    }
    setAnchor(row);
    focus(row);
    if (m_flat->isGroup(row))
        return;
    if (has(modifiers, Qt::ControlModifier))
        select(row, row, Selection::Toggle);
    else if (!m_flat->isRowSelected(row))
        select(row, row, Selection::ClearAndSelect);
}

void TreeNavigator::release(int row, int modifiers)
{
    if (!selectionModel() || !m_flat->isRowSelected(row))
        return;
    if (!has(modifiers, Qt::ShiftModifier) && !has(modifiers, Qt::ControlModifier))
        select(row, row, Selection::ClearAndSelect);
}

void TreeNavigator::pressForMenu(int row)
{
    if (selectionModel() && !m_flat->isRowSelected(row))
        press(row, Qt::NoModifier);
    else if (selectionModel())
        focus(row);
}

void TreeNavigator::clearSelection()
{
    if (!selectionModel())
        return;
    const QScopedValueRollback<bool> guard(m_changing, true);
    selectionModel()->select(QItemSelection(), Selection::Clear);
}

void TreeNavigator::selectVisible()
{
    if (selectionModel() && m_flat->count() > 0)
        select(0, m_flat->count() - 1, Selection::ClearAndSelect);
}

void TreeNavigator::selectMatches()
{
    if (!selectionModel())
        return;
    const QScopedValueRollback<bool> guard(m_changing, true);
    selectionModel()->select(m_flat->matchingSelection(), Selection::ClearAndSelect);
}

void TreeNavigator::toggle(int row, int modifiers)
{
    if (!m_flat)
        return;
    const bool expand = !m_flat->isRowExpanded(row);
    if (has(modifiers, Qt::ShiftModifier))
        m_flat->setRowBranchExpanded(row, expand);
    else
        m_flat->setRowExpanded(row, expand);
    keepFocusVisible();
}

void TreeNavigator::expandAll()
{
    if (m_flat)
        m_flat->expandAll();
}

void TreeNavigator::collapseAll()
{
    if (!m_flat)
        return;
    m_flat->collapseAll();
    keepFocusVisible();
}

void TreeNavigator::keepFocusVisible()
{
    if (!selectionModel() || !selectionModel()->currentIndex().isValid() || currentRow() >= 0)
        return;
    const int row = m_flat->nearestRow(selectionModel()->currentIndex());
    if (row >= 0)
        focus(row);
}

} // namespace kyr::panel
