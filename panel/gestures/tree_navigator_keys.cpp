// The keyboard of the flat tree.

#include "tree_navigator.h"

#include <QScopedValueRollback>

namespace kyr::panel {

namespace {

using Selection = QItemSelectionModel;

constexpr int relevantModifiers =
    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

bool isLetters(const QString& text)
{
    return !text.isEmpty() && text[0].isPrint();
}

} // namespace

bool TreeNavigator::key(int key, int modifiers, const QString& text)
{
    if (!selectionModel() || m_outline->count() == 0)
        return false;
    modifiers &= relevantModifiers;
    const int row = currentRow();
    const int last = m_outline->count() - 1;
    switch (key) {
    case Qt::Key_Up:
        return moveTo(row < 0 ? last : row - 1, modifiers);
    case Qt::Key_Down:
        return moveTo(row + 1, modifiers);
    case Qt::Key_PageUp:
        return moveTo(row - pageStep(), modifiers);
    case Qt::Key_PageDown:
        return moveTo(row + pageStep(), modifiers);
    case Qt::Key_Home:
        return moveTo(0, modifiers);
    case Qt::Key_End:
        return moveTo(last, modifiers);
    case Qt::Key_Right:
        return moveIn(modifiers);
    case Qt::Key_Left:
        return moveOut(modifiers);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (row < 0)
            return false;
        if (m_outline->isGroup(row))
            toggle(row, modifiers);
        else
            Q_EMIT activated(m_outline->sourceIndex(row));
        return true;
    case Qt::Key_Space:
        return m_typeAhead.isActive() && modifiers == 0 ? search(text) : pressSpace(modifiers);
    case Qt::Key_A:
        if (modifiers == Qt::ControlModifier) {
            const QScopedValueRollback<bool> guard(m_changing, true);
            Q_EMIT selectAllRequested();
            return true;
        }
        break;
    case Qt::Key_Asterisk:
        if (row >= 0 && !m_typeAhead.isActive()) {
            m_outline->setRowBranchExpanded(row, true);
            return true;
        }
        break;
    default:
        break;
    }
    const bool plain = (modifiers & ~Qt::ShiftModifier) == 0;
    return plain && isLetters(text) && search(text);
}

bool TreeNavigator::moveTo(int row, int modifiers)
{
    m_typeAhead.stop();
    row = qBound(0, row, m_outline->count() - 1);
    const bool control = (modifiers & Qt::ControlModifier) != 0;
    if ((modifiers & Qt::ShiftModifier) != 0) {
        extendTo(row, control);
    } else {
        focus(row);
        if (!control)
            selectAlone(row);
    }
    Q_EMIT rowReached(row);
    return true;
}

// A group is no object: it takes the focus and leaves the selection.
void TreeNavigator::selectAlone(int row)
{
    setAnchor(row);
    if (!m_outline->isGroup(row))
        select(row, row, Selection::ClearAndSelect);
}

bool TreeNavigator::moveIn(int modifiers)
{
    const int row = currentRow();
    if (row < 0 || !m_outline->rowHasChildren(row))
        return row >= 0;
    if ((modifiers & Qt::ShiftModifier) != 0)
        m_outline->setRowBranchExpanded(row, true);
    else if (!m_outline->isRowExpanded(row))
        m_outline->setRowExpanded(row, true);
    else if (m_outline->parentRow(row + 1) == row)
        return moveTo(row + 1, modifiers);
    return true;
}

bool TreeNavigator::moveOut(int modifiers)
{
    const int row = currentRow();
    if (row < 0)
        return false;
    const bool open = m_outline->isRowExpanded(row) && m_outline->rowHasChildren(row);
    if ((modifiers & Qt::ShiftModifier) != 0)
        m_outline->setRowBranchExpanded(row, false);
    else if (open)
        m_outline->setRowExpanded(row, false);
    else if (m_outline->parentRow(row) >= 0)
        return moveTo(m_outline->parentRow(row), modifiers);
    return true;
}

bool TreeNavigator::pressSpace(int modifiers)
{
    const int row = currentRow();
    if (row < 0)
        return false;
    if ((modifiers & Qt::ShiftModifier) != 0) {
        extendTo(row, (modifiers & Qt::ControlModifier) != 0);
        return true;
    }
    setAnchor(row);
    select(row, row,
           (modifiers & Qt::ControlModifier) != 0 ? Selection::Toggle : Selection::Select);
    return true;
}

bool TreeNavigator::search(const QString& text)
{
    const int row = m_typeAhead.type(text, *m_outline, currentRow());
    if (row < 0)
        return true;
    focus(row);
    selectAlone(row);
    Q_EMIT rowReached(row);
    return true;
}

} // namespace kyr::panel
