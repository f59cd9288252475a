#include "row_selection_model.h"

#include "saved_layout.h"
#include "selection_algebra.h"

#include <QAbstractItemModel>
#include <QSignalBlocker>

#include <utility>

namespace kyr::selection {

RowSelectionModel::RowSelectionModel(QAbstractItemModel* model, QObject* parent)
    : QItemSelectionModel(nullptr, parent)
{
    // The first to hear of a change: one that `select` does not announce is the base class's own,
    // made before the model's announcement got here.
    connect(this, &QItemSelectionModel::selectionChanged, this, [this] {
        if (!std::exchange(m_announcing, false))
            m_joined = true;
    });
    connect(this, &QItemSelectionModel::modelChanged, this, &RowSelectionModel::followModel);
    setModel(model);
}

void RowSelectionModel::followModel()
{
    for (const QMetaObject::Connection& connection : m_modelConnections)
        disconnect(connection);
    m_modelConnections.clear();
    m_joined = true;
    QAbstractItemModel* source = model();
    if (!source)
        return;
    const auto join = [this] { m_joined = true; };
    const auto save = [this] { saveLayout(false); };
    const auto restore = [this] { restoreLayout(); };
    using Model = QAbstractItemModel;
    m_modelConnections = {
        connect(source, &Model::rowsAboutToBeInserted, this, join),
        connect(source, &Model::rowsAboutToBeRemoved, this, join),
        connect(source, &Model::columnsAboutToBeInserted, this, join),
        connect(source, &Model::columnsAboutToBeRemoved, this, join),
        connect(source, &Model::modelAboutToBeReset, this, join),
        connect(source, &Model::rowsAboutToBeMoved, this, save),
        connect(source, &Model::columnsAboutToBeMoved, this, save),
        connect(source, &Model::rowsMoved, this, restore),
        connect(source, &Model::columnsMoved, this, restore),
        connect(source, &Model::layoutAboutToBeChanged, this,
                [this](const QList<QPersistentModelIndex>&, Model::LayoutChangeHint hint) {
                    saveLayout(hint == Model::VerticalSortHint);
                }),
        connect(source, &Model::layoutChanged, this, restore),
    };
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

    settle();
    const QItemSelection before = m_stored;
    if (command & Clear) {
        m_ranges.clear();
        m_current.clear();
    } else if (!(command & Current)) {
        m_ranges = before;
        m_current.clear();
    }
    if (command & (Select | Deselect | Toggle)) {
        m_currentCommand = command;
        m_current = command & (Rows | Columns) ? expanded(selection, *model(), command) : selection;
    }
    const QItemSelection after = merged(m_ranges, m_current, m_currentCommand);
    store(after);

    const Difference change = difference(before, after);
    if (!change.isEmpty()) {
        m_announcing = !signalsBlocked();
        Q_EMIT selectionChanged(change.selected, change.deselected);
    }
}

// From empty, the base class takes a list over without comparing ranges.
void RowSelectionModel::store(const QItemSelection& selection)
{
    const QSignalBlocker blocker(this);
    QItemSelectionModel::select(QItemSelection(), Clear);
    QItemSelectionModel::select(selection, Select);
    m_stored = selection;
}

QItemSelection RowSelectionModel::finishedSelection() const
{
    return m_joined ? selection() : m_stored;
}

void RowSelectionModel::settle()
{
    if (!m_joined)
        return;
    m_joined = false;
    m_stored = selection();
    m_ranges = m_stored;
    m_current.clear();
}

void RowSelectionModel::saveLayout(bool sortsRows)
{
    settle();
    m_sortsRows = sortsRows;
    m_savedRanges = savedCells(m_ranges, sortsRows);
    m_savedCurrent = savedCells(m_current, sortsRows);
}

// The base class has restored the joined list by now; each part is restored on its own because
// each is put into row order on its own.
void RowSelectionModel::restoreLayout()
{
    const std::vector<SavedCells> ranges = std::exchange(m_savedRanges, {});
    const std::vector<SavedCells> current = std::exchange(m_savedCurrent, {});
    if (ranges.empty() && current.empty())
        return;
    m_ranges = restoredCells(ranges, m_sortsRows);
    m_current = restoredCells(current, m_sortsRows);
    store(merged(m_ranges, m_current, m_currentCommand));
}

} // namespace kyr::selection
