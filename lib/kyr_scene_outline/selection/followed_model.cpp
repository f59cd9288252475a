// How the row selection follows changes of its item model, in place of the base class.

#include "row_selection_model.h"
#include "selection_algebra.h"
#include "structure_changes.h"

#include <QAbstractItemModel>
#include <QSignalBlocker>

#include <utility>

namespace kyr::selection {

void RowSelectionModel::followModel()
{
    for (const QMetaObject::Connection& connection : m_modelConnections)
        disconnect(connection);
    m_modelConnections.clear();
    m_keptRanges = nullptr;
    m_keptCurrent = nullptr;
    m_fitted = nullptr;
    m_mayHoldDead = true;
    QAbstractItemModel* source = model();
    if (!source)
        return;

    const auto follow = [this, source](auto signal, auto handler) {
        // The base class has connected itself to the same signal a moment ago.
        disconnect(source, signal, this, nullptr);
        m_modelConnections.push_back(connect(source, signal, this, handler));
    };
    using Model = QAbstractItemModel;
    follow(&Model::rowsAboutToBeRemoved, &RowSelectionModel::beginRowsRemoval);
    follow(&Model::rowsAboutToBeInserted, [this](const QModelIndex& parent, int first) {
        beginInsertion(model()->index(first, 0, parent), splitAtRow);
    });
    follow(&Model::columnsAboutToBeRemoved, &RowSelectionModel::beginColumnsRemoval);
    follow(&Model::columnsAboutToBeInserted, [this](const QModelIndex& parent, int first) {
        beginInsertion(model()->index(0, first, parent), splitAtColumn);
    });
    for (const auto signal : {&Model::rowsRemoved, &Model::rowsInserted, &Model::columnsInserted})
        follow(signal, [this] { m_fitted = nullptr; });
    follow(&Model::columnsRemoved, [this] {
        m_fitted = nullptr;
        m_mayHoldDead = true; // below cells of the columns
    });
    follow(&Model::rowsAboutToBeMoved,
           [this](const QModelIndex& from, int first, int last, const QModelIndex& to, int row) {
               keep(throughRowMove(from, first, last, to, row));
           });
    follow(&Model::rowsMoved, &RowSelectionModel::restoreKept);
    follow(&Model::columnsAboutToBeMoved, [this] { keep(throughLayoutChange(false)); });
    follow(&Model::columnsMoved, &RowSelectionModel::restoreKept);
    follow(&Model::layoutAboutToBeChanged,
           [this](const QList<QPersistentModelIndex>&, Model::LayoutChangeHint hint) {
               keep(throughLayoutChange(hint == Model::VerticalSortHint));
           });
    follow(&Model::layoutChanged, &RowSelectionModel::restoreKept);
    m_modelConnections.push_back(
        connect(source, &Model::modelAboutToBeReset, this, [this] { m_mayHoldDead = true; }));
}

void RowSelectionModel::beginRowsRemoval(const QModelIndex& parent, int first, int last)
{
    const Operation running(*this);
    forgetDeadRanges();
    finalize();
    const QModelIndex index = currentIndex();
    if (index.isValid() && index.parent() == parent && index.row() >= first &&
        index.row() <= last) {
        const int rows = model()->rowCount(parent);
        const int next = first > 0 ? first - 1 : last < rows - 1 ? last + 1 : -1;
        setCurrentIndex(model()->index(next, index.column(), parent), NoUpdate);
    }

    const QItemSelectionRange leaving(model()->index(first, 0, parent),
                                      model()->index(last, 0, parent));
    m_fitted = [leaving](const QItemSelection& added) {
        // Listeners hear that the rows are gone before this is taken back.
        return leaving.isValid() ? RowsRemoval(leaving.parent(), leaving.top(), leaving.bottom())
                                       .appliedTo(added)
                                       .kept
                                 : added;
    };
    const QItemSelection removed = takeOutRows(parent, first, last);
    if (!removed.isEmpty())
        Q_EMIT selectionChanged(QItemSelection(), removed);
}

QItemSelection RowSelectionModel::takeOutRows(const QModelIndex& parent, int first, int last)
{
    RowsRemoval removal(parent, first, last);
    if (!m_current.isEmpty()) {
        // Listeners of the current index have selected: what they did is the second part.
        const RowsRemoval::Outcome ranges = removal.appliedTo(m_ranges);
        const RowsRemoval::Outcome current = removal.appliedTo(m_current);
        const QItemSelection removed = removal.appliedTo(m_finished).removed;
        if (!ranges.removed.isEmpty() || !current.removed.isEmpty())
            setParts(ranges.kept, current.kept);
        return removed;
    }
    m_finished.clear(); // or it would share the list that ranges are taken out of
    RowsRemoval::Outcome ranges = removal.appliedTo(std::move(m_ranges));
    m_ranges = std::move(ranges.kept);
    m_finished = m_ranges;
    const bool isInStep = ranges.removed.isEmpty() || (ranges.isSmall && !m_finished.isEmpty() &&
                                                       baseTakesOutRows(parent, first, last));
    if (!isInStep)
        publish();
    return ranges.removed;
}

// To hand few changes of a long list to the base class anew would copy the list four times. Its own
// slot, from which it was disconnected, does the same to its list in place.
bool RowSelectionModel::baseTakesOutRows(const QModelIndex& parent, int first, int last)
{
    const QSignalBlocker blocker(this);
    return callBase("_q_rowsAboutToBeRemoved", Q_ARG(QModelIndex, parent), Q_ARG(int, first),
                    Q_ARG(int, last));
}

void RowSelectionModel::beginColumnsRemoval(const QModelIndex& parent, int first, int last)
{
    const Operation running(*this);
    const QModelIndex current = currentIndex();
    if (current.isValid() && current.parent() == parent && current.column() >= first &&
        current.column() <= last) {
        const int columns = model()->columnCount(parent);
        const int next = first > 0 ? first - 1 : last < columns - 1 ? last + 1 : -1;
        setCurrentIndex(model()->index(current.row(), next, parent), NoUpdate);
    }
    forgetDeadRanges();
    finalize();
    const QItemSelection leaving(model()->index(0, first, parent),
                                 model()->index(model()->rowCount(parent) - 1, last, parent));
    m_fitted = [leaving](const QItemSelection& added) { return withoutCells(added, leaving); };
    const QItemSelection before = m_finished;
    setParts(merged(before, leaving, Deselect), {});
    const Difference change = difference(before, m_finished);
    if (!change.isEmpty())
        Q_EMIT selectionChanged(change.selected, change.deselected);
    finalize();
}

// No range lies across the end of the rows or columns, so there is nothing to split.
void RowSelectionModel::beginInsertion(const QModelIndex& behind,
                                       QItemSelection (*split)(const QItemSelection&,
                                                               const QModelIndex&))
{
    forgetDeadRanges();
    finalize();
    if (!behind.isValid())
        return;
    // It moves when the insertion is done, which other listeners may hear before this is taken
    // back.
    m_fitted = [behind = behind, place = QPersistentModelIndex(behind), split](const auto& ranges) {
        return behind == place ? split(ranges, behind) : ranges;
    };
    const QItemSelection parts = split(m_ranges, behind);
    if (parts.size() != m_ranges.size())
        setParts(parts, {});
}

void RowSelectionModel::keep(const CellKeeper& keeper)
{
    forgetDeadRanges();
    const bool anything = !m_ranges.isEmpty() || !m_current.isEmpty();
    m_keptRanges = anything ? keeper(m_ranges) : RestoredCells();
    m_keptCurrent = anything ? keeper(m_current) : RestoredCells();
}

// Each part is restored on its own because each is put into row order on its own.
void RowSelectionModel::restoreKept()
{
    const RestoredCells keptRanges = std::exchange(m_keptRanges, nullptr);
    const RestoredCells keptCurrent = std::exchange(m_keptCurrent, nullptr);
    if (!keptRanges) {
        m_mayHoldDead = true;
        return;
    }
    const QItemSelection ranges = keptRanges();
    const QItemSelection current = keptCurrent();
    // What both make together may have changed where neither has.
    const bool isOne = ranges.isEmpty() || current.isEmpty();
    if (!(isOne && ranges == m_ranges && current == m_current))
        setParts(ranges, current);
}

} // namespace kyr::selection
