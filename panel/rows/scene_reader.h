#pragma once

#include <panel/rows/row_walk.h>

#include <functional>
#include <vector>

namespace kyr::panel {

/// Reads rows of a scene that are not known yet, a row with each step.
///
/// They become nodes of their own, children behind their parents, ready to be built into a block.
class FreshRows
{
public:
    /// What a row starts as, from its index and the flags of its parent. The children of rows that
    /// are not `Unread` are read with them.
    using StartOf = std::function<quint32(const QModelIndex&, quint32)>;

    FreshRows(RowTree& rows, const QAbstractItemModel& model, StartOf startOf)
        : m_rows(rows), m_model(model), m_startOf(std::move(startOf))
    {}

    /// Children `first` to `last` of a row with these flags come next.
    void add(const QModelIndex& parent, quint32 parentFlags, int first, int last, int depth);
    bool isDone() const { return m_levels.empty(); }
    /// Reads one row, if there is one left, and appends it.
    void step(std::vector<RowTree::Node>& rows);

private:
    struct Level
    {
        QModelIndex parent;
        quint32 flags;
        int row;
        int last;
        int depth;
    };

    RowTree& m_rows;
    const QAbstractItemModel& m_model;
    StartOf m_startOf;
    std::vector<Level> m_levels;
};

/// Reads all that is not known yet below a row, or everywhere, in parts.
///
/// Good for nothing once the scene changes; the destructor gives up what was read then.
class BranchReader
{
public:
    /// From `walk`'s row on to `end`, which is not one of them any more.
    BranchReader(RowTree& rows, const QAbstractItemModel& model, const RowWalk& walk,
                 RowTree::Node end, FreshRows::StartOf startOf)
        : m_rows(rows), m_model(model), m_walk(walk), m_end(end), m_fresh(rows, model, startOf)
    {}
    ~BranchReader();
    BranchReader(const BranchReader&) = delete;
    BranchReader& operator=(const BranchReader&) = delete;

    /// True when all is read.
    bool step();
    /// Every row from the first on, known or not; they are the caller's then.
    std::vector<RowTree::Node> take();

private:
    RowTree& m_rows;
    const QAbstractItemModel& m_model;
    RowWalk m_walk;
    const RowTree::Node m_end;
    FreshRows m_fresh;
    std::vector<RowTree::Node> m_all;
    std::vector<RowTree::Node> m_read; ///< Known rows whose children were not.
    std::vector<std::pair<std::size_t, std::size_t>> m_new;
};

} // namespace kyr::panel
