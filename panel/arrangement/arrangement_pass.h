#pragma once

#include <panel/arrangement/arranged_rows.h>
#include <panel/arrangement/arrangement_rules.h>
#include <panel/arrangement/sliced_sort.h>
#include <panel/rows/scene_mirror.h>

#include <QDeadlineTimer>
#include <QMap>
#include <QSet>

#include <memory>
#include <optional>
#include <vector>

namespace kyr::panel {

/// Makes the rows of one arrangement of a scene, in parts: finds those that are to show, sorts them
/// below their parents and lays them out. Good for nothing once the mirror's version is another.
class ArrangementPass
{
public:
    /// `closedGroups` are the types of groups that start closed.
    ArrangementPass(SceneMirror& mirror, const ArrangementSettings& settings,
                    const QSet<QString>& closedGroups);

    /// Works until all is done, which makes it return true, or the time is up.
    bool work(const QDeadlineTimer& deadline);
    int version() const { return m_version; }
    const ArrangementRules& rules() const { return m_rules; }

    /// Once done; marks and open rows are those of this moment.
    std::unique_ptr<ArrangedRows> take();
    int matchCount() const { return m_matches; }
    /// Whether some rows of the scene have children that it has not fetched.
    bool isPartial() const { return m_partial; }

private:
    using Node = RowTree::Node;
    enum class Stage
    {
        Reading,
        Finding,
        Sorting,
        LayingOut,
        Clearing,
        Done,
    };
    /// A row that shows. The first one stands for the root.
    struct Entry
    {
        Node node = RowTree::none;
        quint32 parent = 0;
        bool leads = false;
    };
    struct Level
    {
        Node node;
        quint32 entry;
    };
    struct Less
    {
        const ArrangementPass* pass;
        bool operator()(quint32 a, quint32 b) const
        {
            return pass->m_rules.precedes(pass->m_keys[a], pass->m_keys[b]);
        }
    };
    using Sort = SlicedSort<quint32, Less>;

    void step();
    void find();
    void startSorting();
    bool sortNext();
    void layOut();
    quint32 append(Node node, quint32 parent, bool leads, const QModelIndex& index);
    quint32 parentOf(const QModelIndex& index);
    void appendGroups();
    bool showsInOrder() const { return !m_rules.sorts() && !m_rules.groups(); }

    SceneMirror& m_mirror;
    const ArrangementRules m_rules;
    const QSet<QString> m_closedGroups;
    int m_version;
    Stage m_stage = Stage::Reading;
    std::optional<RowWalk> m_walk;
    std::vector<Level> m_levels; ///< What leads to the row that is looked at.
    std::vector<Entry> m_entries{Entry()};
    std::vector<SortKey> m_keys;
    QMap<QString, quint32> m_groups;
    // Children of each entry, one list behind the other.
    std::vector<quint32> m_firstChild;
    std::vector<quint32> m_children;
    quint32 m_sorted = 0;
    std::vector<quint32> m_family; ///< A long list while it is sorted.
    std::unique_ptr<Sort> m_sort;
    std::vector<std::pair<quint32, quint32>> m_ranges; ///< Children to lay out, on each level.
    quint32 m_next = 1;
    std::vector<int> m_depths;
    std::unique_ptr<ArrangedRows> m_rows;
    std::vector<Node> m_order;
    int m_matches = 0;
    bool m_partial = false;
};

} // namespace kyr::panel
