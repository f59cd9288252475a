#pragma once

#include "type_counts.h"

#include <QAbstractItemModel>

#include <vector>

namespace sample {

/// All rows of a model, kept up to date at a cost of the rows that change. What takes longer than
/// some milliseconds, a scene or a large branch, is counted anew from the event loop, a part at a
/// time, and told when it is done.
class SceneStatistics : public TypeCounts
{
    Q_OBJECT

public:
    /// The model, which may be null, must outlive the statistics.
    explicit SceneStatistics(QAbstractItemModel* model);

private:
    struct Level
    {
        QModelIndex parent;
        int next;
        int end;
    };

    void startCount();
    void count();
    void rowsChanged(const QModelIndex& parent, int first, int last, int count);
    bool addSlice(std::vector<Level>& walk, int count);
    bool addNext(std::vector<Level>& walk, int count);

    QAbstractItemModel* m_model;
    /// Up to where the scene was counted; empty once all of it was.
    std::vector<Level> m_walk;
    QTimer m_slices;
};

} // namespace sample
