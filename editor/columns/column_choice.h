#pragma once

#include <editor/columns/scene_columns_model.h>

#include <QItemSelectionModel>

namespace editor {

/// The columns that the user chose to see: those selected. The choice and the order of columns are
/// kept in the application's settings and come back with the next object. A column that is chosen
/// anew stands behind those that are there.
class ColumnChoice final : public QItemSelectionModel
{
    Q_OBJECT

public:
    /// The columns must outlive the choice.
    explicit ColumnChoice(SceneColumnsModel& columns, QObject* parent = nullptr);

    void select(const QItemSelection& selection,
                QItemSelectionModel::SelectionFlags command) override;
    using QItemSelectionModel::select;

private:
    /// In the order in which they show.
    QModelIndexList chosenColumns() const;
    void restore();
    void save() const;

    SceneColumnsModel& m_columns;
};

} // namespace editor
