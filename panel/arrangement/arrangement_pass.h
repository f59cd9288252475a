#pragma once

#include <panel/arrangement/arrangement_rules.h>
#include <panel/arrangement/sliced_sort.h>
#include <panel/rows/scene_mirror.h>

#include <QMap>

#include <memory>
#include <optional>
#include <vector>

namespace kyr::panel {

/// Makes the rows of one arrangement of a scene, in parts: finds those that are to show, sorts them
/// below their parents and lays them out. Good for nothing once the mirror's version is another.
class ArrangementPass
{
public:
    ArrangementPass(SceneMirror& mirror, const ArrangementSettings& settings);

    /// Works until all is done, which makes it return true, or the time is up.
    bool work(const QDeadlineTimer& deadline);
    int version() const { return m_version; }
    const ArrangementRules& rules() const { return m_rules; }

    // Once done:
    /// Rows of the scene, and of its groups, in their new order.
    const std::vector<RowTree::Row>& rows() const { return m_order; }
    /// Those that show only because of rows below them.
    const std::vector<RowTree::Node>& leads() const { return m_leads; }
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
        RowTree::Row row{RowTree::none, -1};
        quint32 parent = 0;
    };
    /// A row that leads to the one that is looked at, and its entry or 0.
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

    void step();
    void find();
    void startSorting();
    void sortNext();
    void layOut();
    quint32 append(Node node, quint32 parent, const QModelIndex& index);
    quint32 parentOf(const QModelIndex& index);

    SceneMirror& m_mirror;
    const ArrangementRules m_rules;
    const int m_version;
    Stage m_stage = Stage::Reading;
    std::optional<RowWalk> m_walk;
    std::vector<Level> m_levels;
    std::vector<Entry> m_entries{Entry()};
    std::vector<SortKey> m_keys;
    QMap<QString, quint32> m_groups;
    // Children of each entry, one list behind the other.
    std::vector<quint32> m_firstChild;
    std::vector<quint32> m_children;
    quint32 m_sorted = 0;
    std::optional<SlicedSort<quint32, Less>> m_sort;
    std::vector<std::pair<quint32, quint32>> m_ranges; ///< Children to lay out, on each level.
    std::vector<RowTree::Row> m_order;
    std::vector<Node> m_leads;
    int m_matches = 0;
    bool m_partial = false;
};

} // namespace kyr::panel
