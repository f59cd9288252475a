#pragma once

#include <kyr_scene_outline/selection/saved_cells.h>

#include <QItemSelectionModel>
#include <QMetaObject>

#include <functional>
#include <vector>

namespace kyr::selection {

/// A `QItemSelectionModel` for large scenes. It selects, reports and orders exactly as the stock
/// model does, but costs O(n log n) in the ranges involved, where the stock model compares every
/// range with every other and takes ranges out of the middle of its list one by one.
///
/// The selection lives here in the two parts that the stock model knows, and this class follows the
/// item model. The base class holds the current index and, for its getters, the finished list.
///
/// Listeners of any signal may select again and may retire the model (see `retire`). Rows that are
/// announced to go cannot be selected any more; ranges that died unannounced are forgotten. As in
/// the stock model, what is selected between the two signals of a relayout or a move does not last.
class RowSelectionModel : public QItemSelectionModel
{
    Q_OBJECT

public:
    explicit RowSelectionModel(QAbstractItemModel* model, QObject* parent = nullptr);

    /// Deletes `model`: now, or when its operations that still run have returned. It is silent and
    /// deaf from here on.
    static void retire(RowSelectionModel* model);

    /// What `selection()` returns, without the copy that it makes.
    QItemSelection finishedSelection() const;

    using QItemSelectionModel::select;
    void select(const QItemSelection& selection,
                QItemSelectionModel::SelectionFlags command) override;
    void setCurrentIndex(const QModelIndex& index,
                         QItemSelectionModel::SelectionFlags command) override;
    void clear() override;
    void reset() override;
    void clearCurrentIndex() override;

private:
    /// Marks an operation of the model that is on the stack; the last one to return deletes a model
    /// that was retired meanwhile.
    class Operation
    {
    public:
        explicit Operation(RowSelectionModel& model) : m_model(model)
        {
            ++m_model.m_runningOperations;
        }
        ~Operation()
        {
            if (--m_model.m_runningOperations == 0 && m_model.m_retired)
                delete &m_model;
        }
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;

    private:
        RowSelectionModel& m_model;
    };

    void followModel();
    void beginRowsRemoval(const QModelIndex& parent, int first, int last);
    /// What was selected of the rows and below them.
    QItemSelection takeOutRows(const QModelIndex& parent, int first, int last);
    bool baseTakesOutRows(const QModelIndex& parent, int first, int last);
    void beginColumnsRemoval(const QModelIndex& parent, int first, int last);
    void beginInsertion(const QModelIndex& behind,
                        QItemSelection (*split)(const QItemSelection&, const QModelIndex&));
    void keep(const CellKeeper& keeper);
    void restoreKept();

    void finalize();
    void forgetDeadRanges();
    void setParts(const QItemSelection& ranges, const QItemSelection& current);
    void publish();
    void prepareToClearBase(const QModelIndex& cell);
    void clearBase();
    /// Runs a slot for changes of the item model, from which the base class was disconnected.
    template <typename... Arguments>
    bool callBase(const char* slot, Arguments... arguments)
    {
        return QMetaObject::invokeMethod(this, slot, Qt::DirectConnection, arguments...);
    }

    QItemSelection m_ranges;
    /// What the next selection with `Current` replaces.
    QItemSelection m_current;
    QItemSelectionModel::SelectionFlags m_currentCommand = QItemSelectionModel::NoUpdate;
    /// Both parts merged.
    QItemSelection m_finished;

    /// What a change of the item model that is announced and not done makes of new ranges: they
    /// lose rows that go and do not grow over rows that come.
    std::function<QItemSelection(const QItemSelection&)> m_fitted;
    /// The item model may have taken cells away without telling which.
    bool m_mayHoldDead = false;
    RestoredCells m_keptRanges;
    RestoredCells m_keptCurrent;
    std::vector<QMetaObject::Connection> m_modelConnections;

    int m_runningOperations = 0;
    bool m_retired = false;
};

} // namespace kyr::selection
