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

void TreeNavigator::setOutline(OutlineModel* model)
{
    if (model == m_outline)
        return;
    m_outline = model;
    m_anchor = QPersistentModelIndex();
    m_typeAhead.stop();
    Q_EMIT outlineChanged();
}

QItemSelectionModel* TreeNavigator::selectionModel() const
{
    QItemSelectionModel* selection = m_outline ? m_outline->selectionModel() : nullptr;
    return selection && selection->model() == m_outline->sourceModel() ? selection : nullptr;
}

int TreeNavigator::currentRow() const
{
    return selectionModel() ? m_outline->currentRow() : -1;
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
    selectionModel()->select(m_outline->sourceSelection(first, last), flags);
}

void TreeNavigator::focus(int row)
{
    const QScopedValueRollback<bool> guard(m_changing, true);
    m_outline->setCurrentRow(row);
}

void TreeNavigator::setAnchor(int row)
{
    m_anchor = m_outline->sourceIndex(row);
}

void TreeNavigator::extendTo(int row, bool keepOthers)
{
    int anchor = m_outline->nearestRow(m_anchor);
    if (anchor < 0)
        anchor = currentRow() < 0 ? row : currentRow();
    setAnchor(anchor);
    select(qMin(anchor, row), qMax(anchor, row),
           keepOthers ? Selection::Select : Selection::ClearAndSelect);
    focus(row);
}

void TreeNavigator::press(int row, int modifiers)
{
    if (!selectionModel() || row < 0 || row >= m_outline->count())
        return;
    m_typeAhead.stop();
    if (has(modifiers, Qt::ShiftModifier)) {
        extendTo(row, has(modifiers, Qt::ControlModifier));
        return;
    }
    setAnchor(row);
    focus(row);
    if (m_outline->isGroup(row))
        return;
    if (has(modifiers, Qt::ControlModifier))
        select(row, row, Selection::Toggle);
    else if (!m_outline->isRowSelected(row))
        select(row, row, Selection::ClearAndSelect);
}

void TreeNavigator::release(int row, int modifiers)
{
    if (!selectionModel() || !m_outline->isRowSelected(row))
        return;
    if (!has(modifiers, Qt::ShiftModifier) && !has(modifiers, Qt::ControlModifier))
        select(row, row, Selection::ClearAndSelect);
}

void TreeNavigator::pressForMenu(int row)
{
    if (selectionModel() && !m_outline->isRowSelected(row))
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
    if (selectionModel() && m_outline->count() > 0)
        select(0, m_outline->count() - 1, Selection::ClearAndSelect);
}

void TreeNavigator::selectMatches()
{
    if (!selectionModel())
        return;
    const QScopedValueRollback<bool> guard(m_changing, true);
    selectionModel()->select(m_outline->matchingSelection(), Selection::ClearAndSelect);
}

void TreeNavigator::toggle(int row, int modifiers)
{
    if (!m_outline)
        return;
    const bool expand = !m_outline->isRowExpanded(row);
    if (has(modifiers, Qt::ShiftModifier))
        m_outline->setRowBranchExpanded(row, expand);
    else
        m_outline->setRowExpanded(row, expand);
    keepFocusVisible();
}

void TreeNavigator::expandAll()
{
    if (m_outline)
        m_outline->expandAll();
}

void TreeNavigator::collapseAll()
{
    if (!m_outline)
        return;
    m_outline->collapseAll();
    keepFocusVisible();
}

void TreeNavigator::keepFocusVisible()
{
    if (!selectionModel() || !selectionModel()->currentIndex().isValid() || currentRow() >= 0)
        return;
    const int row = m_outline->nearestRow(selectionModel()->currentIndex());
    if (row >= 0)
        focus(row);
}

} // namespace kyr::panel
