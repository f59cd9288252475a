#pragma once

#include <panel/rows/row_walk.h>

#include <QHash>

#include <optional>
#include <vector>

namespace kyr::panel {

/// Reads rows of a scene that are not known yet, a row with each step: children behind their
/// parents, as long as those are not `Unread`.
///
/// Good for nothing once the scene changes; the destructor gives up what was read and not taken.
class SceneReader
{
public:
    /// How rows that are read start.
    struct Start
    {
        int expandedRole = -1; ///< What says of a row that it wishes to be open.
        bool readsAll = false; ///< Whether closed rows are read with all below them, too.
        QHash<QModelIndex, RowTree::Node> known; ///< Rows that are not new.
    };

    SceneReader(RowMarks& marks, const QAbstractItemModel& scene, Start start)
        : m_marks(marks), m_scene(scene), m_start(std::move(start))
    {}
    ~SceneReader();
    SceneReader(const SceneReader&) = delete;
    SceneReader& operator=(const SceneReader&) = delete;

    /// The children of a row from `first` to `last` come next.
    void add(const QModelIndex& parent, int first, int last, int depth);
    /// Known rows come next, with what is not known below them: from `walk`'s row on to `end`.
    void add(const RowTree& rows, const RowWalk& walk, RowTree::Node end);

    /// False when all is read.
    bool step();
    std::vector<RowTree::Row> take();

private:
    struct Level
    {
        QModelIndex parent;
        int row;
        int last;
        int depth;
    };

    RowMarks& m_marks;
    const QAbstractItemModel& m_scene;
    const Start m_start;
    std::vector<Level> m_levels;
    RowTree::Node nodeFor(const QModelIndex& index);

    const RowTree* m_rows = nullptr;
    std::optional<RowWalk> m_walk;
    RowTree::Node m_end = RowTree::none;
    std::vector<RowTree::Row> m_all;
    std::vector<RowTree::Node> m_new;
    std::vector<RowTree::Node> m_read; ///< Known rows whose children were not.
};

} // namespace kyr::panel
