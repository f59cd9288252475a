#pragma once

#include <support/tree_model.h>

#include <QItemSelectionModel>

#include <functional>
#include <random>
#include <set>

namespace test {

using Flags = QItemSelectionModel::SelectionFlags;

/// When a listener meddles with the selection: around a change of the item model, before or after
/// the selection models hear of it, or when a selection model says something.
enum class Moment
{
    Never,
    EarlyBefore,
    LateBefore,
    EarlyAfter,
    LateAfter,
    Current,
    Selection
};

/// Selects the same on every selection model that it listens to, once for each plan.
class Meddler
{
public:
    explicit Meddler(Moment moment) : m_moment(moment) {}

    Moment moment() const { return m_moment; }

    /// Called before and after the selection models are made.
    void listenTo(TreeModel& model, bool early);
    void listenTo(QItemSelectionModel& selection);
    /// `ranges` is asked when it comes to it, for each selection model.
    void plan(std::function<QItemSelection()> ranges, Flags command)
    {
        m_ranges = std::move(ranges);
        m_command = command;
        m_waiting = {m_models.begin(), m_models.end()};
    }
    void forget() { m_waiting.clear(); }

private:
    void meddle(QItemSelectionModel& selection)
    {
        if (m_waiting.erase(&selection))
            selection.select(m_ranges(), m_command);
    }

    Moment m_moment;
    QObject m_context;
    std::vector<QItemSelectionModel*> m_models;
    std::set<QItemSelectionModel*> m_waiting;
    std::function<QItemSelection()> m_ranges;
    Flags m_command;
};

/// Changes a scene, and selects the same on every selection model that it drives.
class RandomDriver
{
public:
    RandomDriver(unsigned seed, Moment moment);

    TreeModel& model() { return m_model; }

    void drive(std::vector<QItemSelectionModel*> models);
    /// Listeners may select rows that are about to go, one range at a time.
    void setWild() { m_wild = true; }
    /// Does something; says what.
    const char* step();

private:
    void insert(const QModelIndex& parent, int row, int count);
    int pick(int below) { return int(m_random() % unsigned(below)); }
    QModelIndex anyParent();
    QModelIndex parentWithRows();
    bool leaves(const QModelIndex& parent, int top, int bottom) const;
    QItemSelection ranges();
    Flags command();
    void plan();
    void select();
    void clear();
    void reset();
    void setCurrent();
    void insertRows();
    void removeRows();
    void moveRows();
    void reverseRows();
    /// Rows become unselectable in a relayout, where the stock model keeps what died.
    void fadeRows();
    void resetModel();
    void changeColumns();

    std::mt19937 m_random;
    TreeModel m_model;
    const bool m_flat;
    const int m_mostRanges;
    bool m_wild = false;
    Meddler m_meddler;
    std::vector<QItemSelectionModel*> m_models;
    QItemSelectionRange m_leaving;
    int m_made = 0;
};

} // namespace test
