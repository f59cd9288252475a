#include "selection_summary.h"

namespace sample {

SelectionSummary::SelectionSummary(QItemSelectionModel* selection)
{
    if (!selection)
        return;
    connect(selection, &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected, const QItemSelection& deselected) {
                addRows(deselected, -1);
                addRows(selected, 1);
            });
    // A reset clears the selection without a word.
    connect(selection->model(), &QAbstractItemModel::modelReset, this, [this, selection] {
        clear();
        addRows(selection->selection(), 1);
    });
    addRows(selection->selection(), 1);
}

void SelectionSummary::addRows(const QItemSelection& selection, int count)
{
    for (const QItemSelectionRange& range : selection) {
        if (range.left() > 0)
            continue;
        for (int row = range.top(); row <= range.bottom(); ++row)
            add(range.model()->index(row, 0, range.parent()), count);
    }
}

} // namespace sample
