#include "scene_statistics.h"

#include <kyr_scene_outline/item_roles.h>

#include <vector>

namespace sample {

SceneStatistics::SceneStatistics(QAbstractItemModel* model) : m_model(model)
{
    if (!m_model)
        return;
    m_recount.setSingleShot(true);
    connect(&m_recount, &QTimer::timeout, this, &SceneStatistics::count);
    connect(m_model, &QAbstractItemModel::modelReset, this, &SceneStatistics::count);
    connect(m_model, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex& parent, int first, int last) {
                addBranches(parent, first, last, 1);
            });
    connect(m_model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex& parent, int first, int last) {
                addBranches(parent, first, last, -1);
            });
    connect(m_model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QVector<int>& roles) {
                if (roles.isEmpty() || roles.contains(kyr::TypeRole))
                    m_recount.start();
            });
    count();
}

void SceneStatistics::count()
{
    clear();
    addBranches({}, 0, m_model->rowCount() - 1, 1);
}

void SceneStatistics::addBranches(const QModelIndex& parent, int first, int last, int count)
{
    // Scenes may be deeper than the stack allows.
    std::vector<QModelIndex> rows;
    for (int row = first; row <= last; ++row)
        rows.push_back(m_model->index(row, 0, parent));
    while (!rows.empty()) {
        const QModelIndex branch = rows.back();
        rows.pop_back();
        add(branch, count);
        const int children = m_model->rowCount(branch);
        for (int row = 0; row < children; ++row)
            rows.push_back(m_model->index(row, 0, branch));
    }
}

} // namespace sample
