#include "row_selection_model.h"

#include "selection_algebra.h"
#include "structure_changes.h"

#include <QAbstractItemModel>
#include <QSignalBlocker>

#include <utility>

namespace kyr::selection {

namespace {

// Up to here the base class copies a list faster than it is kept from it.
constexpr int shortList = 8;

} // namespace

RowSelectionModel::RowSelectionModel(QAbstractItemModel* model, QObject* parent)
    : QItemSelectionModel(nullptr, parent)
{
    connect(this, &QItemSelectionModel::modelChanged, this, &RowSelectionModel::followModel);
    setModel(model);
}

void RowSelectionModel::retire(RowSelectionModel* model)
{
    if (!model || model->m_runningOperations == 0) {
        delete model;
        return;
    }
    model->m_retired = true;
    model->disconnect();
    for (const QMetaObject::Connection& connection : model->m_modelConnections)
        disconnect(connection);
    model->setParent(nullptr);
}

void RowSelectionModel::select(const QItemSelection& selection,
                               QItemSelectionModel::SelectionFlags command)
{
    if (!model()) {
        QItemSelectionModel::select(selection, command);
        return;
    }
    if (command == NoUpdate)
        return;

    const Operation running(*this);
    forgetDeadRanges();
    const QItemSelection before = m_finished;
    if (command & Clear) {
        m_ranges.clear();
        m_current.clear();
    } else if (!(command & Current)) {
        finalize();
    }
    if (command & (Select | Deselect | Toggle)) {
        m_currentCommand = command;
        m_current = command & (Rows | Columns) ? expanded(selection, *model(), command) : selection;
        if (m_fitted)
            m_current = m_fitted(m_current);
    }
    m_finished = merged(m_ranges, m_current, m_currentCommand);
    const Difference change = difference(before, m_finished);
    if (m_finished.isEmpty() || !(m_finished == before))
        publish();
    if (!change.isEmpty())
        Q_EMIT selectionChanged(change.selected, change.deselected);
}

void RowSelectionModel::setCurrentIndex(const QModelIndex& index,
                                        QItemSelectionModel::SelectionFlags command)
{
    const Operation running(*this);
    QItemSelectionModel::setCurrentIndex(index, command);
}

void RowSelectionModel::clear()
{
    const Operation running(*this);
    QItemSelectionModel::clear();
}

void RowSelectionModel::reset()
{
    const Operation running(*this);
    QItemSelectionModel::reset();
}

void RowSelectionModel::clearCurrentIndex()
{
    const Operation running(*this);
    QItemSelectionModel::clearCurrentIndex();
}

QItemSelection RowSelectionModel::finishedSelection() const
{
    if (!model())
        return {};
    return m_mayHoldDead ? validRanges(m_finished) : m_finished;
}

void RowSelectionModel::finalize()
{
    const bool hides = m_finished.isEmpty() && !(m_ranges.isEmpty() && m_current.isEmpty());
    m_ranges = m_finished;
    m_current.clear();
    if (hides)
        publish();
}

void RowSelectionModel::forgetDeadRanges()
{
    if (!std::exchange(m_mayHoldDead, false))
        return;
    const QItemSelection ranges = validRanges(m_ranges);
    const QItemSelection current = validRanges(m_current);
    if (ranges.size() != m_ranges.size() || current.size() != m_current.size())
        setParts(ranges, current);
}

void RowSelectionModel::setParts(const QItemSelection& ranges, const QItemSelection& current)
{
    m_ranges = ranges;
    m_current = current;
    m_finished = merged(m_ranges, m_current, m_currentCommand);
    publish();
}

// From empty, the base class takes a list over without comparing ranges. It must not look empty
// while there is something to clear, or `clearSelection` does not get here: then it holds a range
// that was toggled twice.
void RowSelectionModel::publish()
{
    const QSignalBlocker blocker(this);
    clearBase();
    if (m_finished.size() > shortList)
        prepareToClearBase(m_finished.constFirst().topLeft());
    if (!m_finished.isEmpty()) {
        QItemSelectionModel::select(m_finished, Select);
        return;
    }
    const QItemSelection hidden = m_ranges.isEmpty() ? m_current : m_ranges;
    if (!hidden.isEmpty()) {
        const QItemSelection one(hidden.constFirst().topLeft(), hidden.constFirst().topLeft());
        QItemSelectionModel::select(one, Select);
        QItemSelectionModel::select(one, Toggle);
    }
}

// To clear a list on command, the base class copies it first. It drops a list without a look at it
// where it goes back to what it saved before a change of the layout: here one cell.
void RowSelectionModel::prepareToClearBase(const QModelIndex& cell)
{
    QItemSelectionModel::select(QItemSelection(cell, cell), Select);
    callBase("_q_layoutAboutToBeChanged");
    QItemSelectionModel::select(QItemSelection(), Clear);
}

void RowSelectionModel::clearBase()
{
    callBase("_q_layoutChanged"); // nothing, where nothing is saved
    QItemSelectionModel::select(QItemSelection(), Clear);
}

} // namespace kyr::selection
