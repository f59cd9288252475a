#pragma once

#include "type_counts.h"

#include <QAbstractItemModel>

namespace sample {

/// All rows of a model, kept up to date at a cost of the rows that change.
class SceneStatistics : public TypeCounts
{
    Q_OBJECT

public:
    /// The model, which may be null, must outlive the statistics.
    explicit SceneStatistics(QAbstractItemModel* model);

private:
    void count();
    void addBranches(const QModelIndex& parent, int first, int last, int count);

    QAbstractItemModel* m_model;
    QTimer m_recount;
};

} // namespace sample
