#include "scene_statistics.h"

#include <kyr_scene_outline/item_roles.h>

#include <QDeadlineTimer>

namespace sample {

namespace {

constexpr int sliceMilliseconds = 4;
// The clock costs more than a row.
constexpr int rowsAtOnce = 64;

} // namespace

SceneStatistics::SceneStatistics(QAbstractItemModel* model) : m_model(model)
{
    if (!m_model)
        return;
    m_slices.setInterval(0);
    connect(&m_slices, &QTimer::timeout, this, &SceneStatistics::count);
    connect(m_model, &QAbstractItemModel::modelReset, this, &SceneStatistics::startCount);
    connect(m_model, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex& parent, int first, int last) {
                rowsChanged(parent, first, last, 1);
            });
    connect(m_model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex& parent, int first, int last) {
                rowsChanged(parent, first, last, -1);
            });
    const auto startAgain = [this] {
        if (!m_walk.empty())
            startCount();
    };
    connect(m_model, &QAbstractItemModel::rowsMoved, this, startAgain);
    connect(m_model, &QAbstractItemModel::layoutChanged, this, startAgain);
    connect(m_model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QVector<int>& roles) {
                if (roles.isEmpty() || roles.contains(kyr::TypeRole))
                    startCount();
            });
    startCount();
}

// The rows are looked at from the event loop, when the model has finished what it does now.
void SceneStatistics::startCount()
{
    setHeld(true);
    clear();
    m_walk = {{{}, 0, -1}};
    m_slices.start();
}

void SceneStatistics::count()
{
    if (!addSlice(m_walk, 1))
        return;
    m_slices.stop();
    setHeld(false);
}

void SceneStatistics::rowsChanged(const QModelIndex& parent, int first, int last, int count)
{
    std::vector<Level> walk{{parent, first, last + 1}};
    if (!m_walk.empty() || !addSlice(walk, count))
        startCount();
}

/// False when there are rows left.
bool SceneStatistics::addSlice(std::vector<Level>& walk, int count)
{
    const QDeadlineTimer end(sliceMilliseconds);
    do {
        for (int i = 0; i < rowsAtOnce; ++i) {
            if (!addNext(walk, count))
                return true;
        }
    } while (!end.hasExpired());
    return false;
}

/// Counts one row more with a stack of its own: scenes may be deeper than the thread's allows.
/// False at the end.
bool SceneStatistics::addNext(std::vector<Level>& walk, int count)
{
    while (!walk.empty()) {
        Level& level = walk.back();
        if (level.end < 0)
            level.end = m_model->rowCount(level.parent);
        if (level.next < level.end) {
            const QModelIndex row = m_model->index(level.next++, 0, level.parent);
            add(row, count);
            walk.push_back({row, 0, -1});
            return true;
        }
        walk.pop_back();
    }
    return false;
}

} // namespace sample
