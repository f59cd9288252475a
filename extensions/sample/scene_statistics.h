#pragma once

#include "type_counts.h"

#include <QAbstractItemModel>

#include <vector>

namespace sample {

/// All rows of a model, kept up to date at a cost of the rows that change. A scene is counted from
/// the event loop, some milliseconds at a time, and anew when its rows change meanwhile.
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
    bool addNext(std::vector<Level>& walk, int count);

    QAbstractItemModel* m_model;
    /// Up to where the scene was counted; empty once all of it was.
    std::vector<Level> m_walk;
    QTimer m_slices;
};

} // namespace sample
