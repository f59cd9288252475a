#include "arrangement_pass.h"

#include <algorithm>

namespace kyr::panel {

namespace {

constexpr int stepsBetweenClockReads = 32;
constexpr std::size_t keysFreedAtOnce = 64;
/// Longer lists are sorted in parts.
constexpr std::size_t shortList = 256;

} // namespace

ArrangementPass::ArrangementPass(SceneMirror& mirror, const ArrangementSettings& settings,
                                 const QSet<QString>& closedGroups)
    : m_mirror(mirror)
    , m_rules(settings, *mirror.model())
    , m_closedGroups(closedGroups)
    , m_version(mirror.version())
    , m_rows(std::make_unique<ArrangedRows>())
{
    m_partial = mirror.model()->canFetchMore({});
    if (m_rules.sorts())
        m_keys.emplace_back();
}

bool ArrangementPass::work(const QDeadlineTimer& deadline)
{
    if (m_stage == Stage::Reading) {
        if (!m_mirror.readAll(deadline))
            return false;
        m_walk.emplace(m_mirror.walk());
        m_stage = Stage::Finding;
    }
    for (int turn = 1; m_stage != Stage::Done; ++turn) {
        step();
        if (turn % stepsBetweenClockReads == 0 && deadline.hasExpired())
            break;
    }
    return m_stage == Stage::Done;
}

void ArrangementPass::step()
{
    switch (m_stage) {
    case Stage::Finding:
        find();
        break;
    case Stage::Sorting:
        if (!sortNext())
            break;
        m_ranges.assign(1, {m_firstChild[0], m_firstChild[1]});
        m_stage = Stage::LayingOut;
        break;
    case Stage::LayingOut:
        layOut();
        break;
    case Stage::Clearing:
        // Keys of texts take their time.
        m_keys.resize(m_keys.size() - std::min(m_keys.size(), keysFreedAtOnce));
        if (m_keys.empty())
            m_stage = Stage::Done;
        break;
    case Stage::Reading:
    case Stage::Done:
        break;
    }
}

quint32 ArrangementPass::append(Node node, quint32 parent, bool leads, const QModelIndex& index)
{
    m_entries.push_back({node, parent, leads});
    if (m_rules.sorts())
        m_keys.push_back(node == RowTree::none ? SortKey() : m_rules.key(index));
    return quint32(m_entries.size() - 1);
}

/// Below what a row that matches shows. Rows that lead to it come first.
quint32 ArrangementPass::parentOf(const QModelIndex& index)
{
    if (m_rules.groups()) {
        const QString type = m_rules.type(index);
        auto group = m_groups.find(type);
        if (group == m_groups.end())
            group = m_groups.insert(type, append(RowTree::none, 0, false, {}));
        return *group;
    }
    if (!m_rules.nests())
        return 0;
    std::size_t known = m_levels.size();
    while (known > 0 && m_levels[known - 1].entry == 0)
        --known;
    QModelIndex above = index;
    std::vector<QModelIndex> indexes;
    for (std::size_t level = m_levels.size(); m_rules.sorts() && level > known; --level) {
        above = above.parent();
        indexes.push_back(above);
    }
    for (; known < m_levels.size(); ++known) {
        const QModelIndex at = indexes.empty() ? QModelIndex() : indexes.back();
        if (!indexes.empty())
            indexes.pop_back();
        const quint32 parent = known == 0 ? 0 : m_levels[known - 1].entry;
        m_levels[known].entry = append(m_levels[known].node, parent, true, at);
    }
    return m_levels.empty() ? 0 : m_levels.back().entry;
}

void ArrangementPass::find()
{
    if (m_walk->atEnd()) {
        if (showsInOrder()) {
            m_stage = Stage::LayingOut;
        } else {
            startSorting();
            m_stage = Stage::Sorting;
        }
        return;
    }
    const Node node = m_walk->node();
    const QModelIndex& index = m_walk->index();
    m_levels.resize(std::size_t(m_mirror.rows().depth(node)));
    m_partial = m_partial || m_mirror.model()->canFetchMore(index);
    quint32 entry = 0;
    if (m_rules.accepts(index)) {
        ++m_matches;
        const quint32 parent = parentOf(index);
        entry = append(node, parent, false, index);
    }
    m_levels.push_back({node, entry});
    m_walk->next();
}

void ArrangementPass::startSorting()
{
    m_firstChild.assign(m_entries.size() + 1, 0);
    for (std::size_t entry = 1; entry < m_entries.size(); ++entry)
        ++m_firstChild[m_entries[entry].parent + 1];
    for (std::size_t entry = 1; entry < m_firstChild.size(); ++entry)
        m_firstChild[entry] += m_firstChild[entry - 1];
    m_children.resize(m_entries.size() - 1);
    std::vector<quint32> next = m_firstChild;
    for (const quint32 group : m_groups)
        m_children[next[0]++] = group;
    for (std::size_t entry = 1; entry < m_entries.size(); ++entry) {
        if (m_entries[entry].node != RowTree::none)
            m_children[next[m_entries[entry].parent]++] = quint32(entry);
    }
    m_sorted = m_rules.sorts() ? 0 : quint32(m_entries.size());
    // Groups are in order.
    if (m_rules.groups())
        m_sorted = std::max(m_sorted, 1u);
}

/// True when all lists are sorted.
bool ArrangementPass::sortNext()
{
    if (m_sorted == m_entries.size())
        return true;
    const auto first = m_children.begin() + std::ptrdiff_t(m_firstChild[m_sorted]);
    const auto last = m_children.begin() + std::ptrdiff_t(m_firstChild[m_sorted + 1]);
    if (std::size_t(last - first) <= shortList) {
        std::stable_sort(first, last, Less{this});
        ++m_sorted;
        return false;
    }
    if (!m_sort) {
        m_family.assign(first, last);
        m_sort = std::make_unique<Sort>(m_family, Less{this});
    }
    if (m_sort->step()) {
        std::copy(m_family.begin(), m_family.end(), first);
        m_sort.reset();
        ++m_sorted;
    }
    return false;
}

void ArrangementPass::layOut()
{
    quint32 next = 0;
    if (showsInOrder()) {
        next = m_next++;
        if (next == m_entries.size()) {
            m_stage = Stage::Clearing;
            return;
        }
    } else {
        while (!m_ranges.empty() && m_ranges.back().first == m_ranges.back().second)
            m_ranges.pop_back();
        if (m_ranges.empty()) {
            m_stage = Stage::Clearing;
            return;
        }
        next = m_children[m_ranges.back().first++];
        m_ranges.emplace_back(m_firstChild[next], m_firstChild[next + 1]);
    }
    const Entry& entry = m_entries[next];
    int depth = int(m_ranges.size()) - 2;
    if (showsInOrder()) {
        m_depths.resize(m_entries.size());
        depth = entry.parent == 0 ? 0 : m_depths[entry.parent] + 1;
        m_depths[next] = depth;
    }
    const quint32 flags = entry.leads ? quint32(RowTree::Leads) : 0u;
    if (entry.node != RowTree::none) {
        m_order.push_back(m_rows->create(entry.node, depth, flags));
        return;
    }
    const QString type = m_groups.key(next);
    m_order.push_back(
        m_rows->createGroup(type, m_closedGroups.contains(type) ? 0u : quint32(RowTree::Expanded)));
}

std::unique_ptr<ArrangedRows> ArrangementPass::take()
{
    const RowTree& scene = m_mirror.rows();
    RowTree& tree = m_rows->tree;
    for (const Node row : m_order) {
        const Node node = m_rows->sceneNode(row);
        if (node == RowTree::none)
            continue;
        tree.set(row, RowTree::Selected, scene.has(node, RowTree::Selected));
        tree.set(row, RowTree::Expanded, m_rules.startsOpen(scene, node));
    }
    tree.rebuild(m_order);
    return std::move(m_rows);
}

} // namespace kyr::panel
