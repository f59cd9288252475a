#include "arrangement_pass.h"

namespace kyr::panel {

namespace {

constexpr int stepsBetweenClockReads = 32;
constexpr std::size_t keysFreedAtOnce = 64;

} // namespace

ArrangementPass::ArrangementPass(SceneMirror& mirror, const ArrangementSettings& settings)
    : m_mirror(mirror), m_rules(settings, *mirror.model()), m_version(mirror.version())
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
        sortNext();
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

void ArrangementPass::find()
{
    if (m_walk->atEnd())
        return startSorting();
    const Node node = m_walk->node();
    const QModelIndex& index = m_walk->index();
    m_levels.resize(std::size_t(m_mirror.rows().depth(node)));
    m_partial = m_partial || m_mirror.model()->canFetchMore(index);
    quint32 entry = 0;
    if (m_rules.accepts(index)) {
        ++m_matches;
        const quint32 parent = parentOf(index);
        entry = append(node, parent, index);
    }
    m_levels.push_back({node, entry});
    m_walk->next();
}

/// Below what a row that matches shows. Rows that lead to it come first.
quint32 ArrangementPass::parentOf(const QModelIndex& index)
{
    if (m_rules.groups()) {
        const QString type = m_rules.type(index);
        quint32& group = m_groups[type];
        if (group == 0)
            group = append(m_mirror.group(type), 0, {});
        return group;
    }
    if (!m_rules.nests() || m_levels.empty())
        return 0;
    if (m_levels.back().entry != 0)
        return m_levels.back().entry;
    std::vector<QModelIndex> above{index.parent()};
    std::size_t level = m_levels.size() - 1;
    for (; level > 0 && m_levels[level - 1].entry == 0; --level)
        above.push_back(above.back().parent());
    for (; level < m_levels.size(); ++level, above.pop_back()) {
        const quint32 parent = level == 0 ? 0 : m_levels[level - 1].entry;
        m_levels[level].entry = append(m_levels[level].node, parent, above.back());
        m_leads.push_back(m_levels[level].node);
    }
    return m_levels.back().entry;
}

quint32 ArrangementPass::append(Node node, quint32 parent, const QModelIndex& index)
{
    m_entries.push_back({{node, m_entries[parent].row.depth + 1}, parent});
    if (m_rules.sorts())
        m_keys.push_back(index.isValid() ? m_rules.key(index) : SortKey());
    return quint32(m_entries.size() - 1);
}

void ArrangementPass::startSorting()
{
    if (!m_rules.sorts() && !m_rules.groups()) {
        m_ranges.assign(1, {1, quint32(m_entries.size())});
        m_stage = Stage::LayingOut;
        return;
    }
    m_firstChild.assign(m_entries.size() + 1, 0);
    for (std::size_t entry = 1; entry < m_entries.size(); ++entry)
        ++m_firstChild[m_entries[entry].parent + 1];
    for (std::size_t entry = 1; entry < m_firstChild.size(); ++entry)
        m_firstChild[entry] += m_firstChild[entry - 1];
    m_children.resize(m_entries.size() - 1);
    std::vector<quint32> next = m_firstChild;
    for (const quint32 group : std::as_const(m_groups))
        m_children[next[0]++] = group;
    for (std::size_t entry = 1; entry < m_entries.size(); ++entry) {
        if (!m_rules.groups() || m_entries[entry].parent != 0)
            m_children[next[m_entries[entry].parent]++] = quint32(entry);
    }
    // Groups are in order.
    m_sorted = m_rules.groups() ? 1 : 0;
    m_stage = Stage::Sorting;
}

void ArrangementPass::sortNext()
{
    if (m_sorted == m_entries.size() || !m_rules.sorts()) {
        m_ranges.assign(1, {m_firstChild[0], m_firstChild[1]});
        m_stage = Stage::LayingOut;
        return;
    }
    quint32* const first = m_children.data() + m_firstChild[m_sorted];
    quint32* const last = m_children.data() + m_firstChild[m_sorted + 1];
    if (!m_sort && last - first > 1)
        m_sort.emplace(first, last, Less{this});
    if (!m_sort || m_sort->step()) {
        m_sort.reset();
        ++m_sorted;
    }
}

void ArrangementPass::layOut()
{
    while (!m_ranges.empty() && m_ranges.back().first == m_ranges.back().second)
        m_ranges.pop_back();
    if (m_ranges.empty()) {
        m_stage = Stage::Clearing;
        return;
    }
    const quint32 next = m_ranges.back().first++;
    // What is not sorted is in order with all that is below it.
    const quint32 entry = m_children.empty() ? next : m_children[next];
    m_order.push_back(m_entries[entry].row);
    if (!m_children.empty())
        m_ranges.emplace_back(m_firstChild[entry], m_firstChild[entry + 1]);
}

} // namespace kyr::panel
