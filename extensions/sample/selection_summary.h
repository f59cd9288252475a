#pragma once

#include "type_counts.h"

#include <QItemSelectionModel>

namespace sample {

/// The selected rows, kept up to date at a cost of the rows that are selected or deselected.
class SelectionSummary : public TypeCounts
{
    Q_OBJECT

public:
    /// The selection, which may be null, must outlive the summary.
    explicit SelectionSummary(QItemSelectionModel* selection);

private:
    void addRows(const QItemSelection& selection, int count);
};

} // namespace sample
