#pragma once

#include "saved_layout.h"

#include <QItemSelectionModel>
#include <QMetaObject>

#include <vector>

namespace kyr::selection {

/// A `QItemSelectionModel` for large scenes. It selects, reports and orders exactly as the stock
/// model does, but every `select` costs O(n log n) in the ranges involved, where the stock model
/// compares every range with every other.
///
/// The base class always holds the finished selection as one list; which part of it belongs to
/// the selection that `QItemSelectionModel::Current` replaces is kept here.
/// Listeners of `selectionChanged` may select again.
class RowSelectionModel : public QItemSelectionModel
{
    Q_OBJECT

public:
    explicit RowSelectionModel(QAbstractItemModel* model, QObject* parent = nullptr);

    /// What `selection()` returns, without the copy that it makes.
    QItemSelection finishedSelection() const;

    using QItemSelectionModel::select;
    void select(const QItemSelection& selection,
                QItemSelectionModel::SelectionFlags command) override;

private:
    void followModel();
    void store(const QItemSelection& selection);
    void settle();
    void saveLayout(bool sortsRows);
    void restoreLayout();

    /// What the base class was last given.
    QItemSelection m_stored;
    QItemSelection m_ranges;
    QItemSelection m_current;
    QItemSelectionModel::SelectionFlags m_currentCommand = QItemSelectionModel::NoUpdate;
    /// The base class joined both parts because rows or columns came or went.
    bool m_joined = false;
    /// Set while `selectionChanged` is on its way from `select` to the first listener.
    bool m_announcing = false;

    std::vector<SavedCells> m_savedRanges;
    std::vector<SavedCells> m_savedCurrent;
    bool m_sortsRows = false;
    std::vector<QMetaObject::Connection> m_modelConnections;
};

} // namespace kyr::selection
