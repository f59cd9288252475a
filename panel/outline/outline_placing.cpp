// Rows of an arrangement that come, go and change places one by one as the scene changes, which
// costs O(log n) for each. Very many at once are left to the next pass.

#include "outline_model.h"

namespace kyr::panel {

namespace {

/// More rows than this in one signal, or in one turn of the event loop, are not placed one by one.
constexpr int placedAtOnce = 64;
constexpr int placedInATurn = 1024;

} // namespace

/// Whether so many rows are placed here, and not by the pass that comes or is under way.
bool OutlineModel::placesRows(int count)
{
    m_touched += count;
    m_slices.start(0); // ends the turn
    const bool places = !m_working && count <= placedAtOnce && m_touched <= placedInATurn;
    if (!places)
        setWorking(true);
    return places;
}

/// Rows of the scene that go, or are put elsewhere.
void OutlineModel::takeAway(RowTree::Range orders)
{
    std::vector<int> places;
    int matching = 0;
    Node node = m_mirror.rows().atOrder(orders.first);
    for (int order = orders.first; order < orders.end; ++order, node = m_mirror.rows().next(node)) {
        if (shown(node) == RowTree::none)
            continue;
        places.push_back(rows().order(node));
        matching += matches(node) ? 1 : 0;
    }
    std::sort(places.begin(), places.end());
    std::vector<RowTree::Range> runs;
    for (const int place : places) {
        if (runs.empty() || runs.back().end != place)
            runs.push_back({place, place});
        ++runs.back().end;
    }
    const bool quiet = !isResetting() && runs.size() > std::size_t(placedAtOnce);
    if (quiet)
        beginReset();
    for (auto run = runs.rbegin(); run != runs.rend(); ++run)
        cutRows(*run);
    if (quiet)
        endReset();
    if (m_rules->filters())
        setMatchCount(m_matches - matching);
}

void OutlineModel::placeNew(RowTree::Range orders)
{
    if (!placesRows(orders.count()))
        return;
    Node node = m_mirror.rows().atOrder(orders.first);
    for (int order = orders.first; order < orders.end; ++order, node = m_mirror.rows().next(node)) {
        if (m_rules->accepts(m_mirror.indexOf(node)))
            show(node);
    }
}

void OutlineModel::placeChanged(const QModelIndex& index, const QVector<int>& roles)
{
    const Node node = m_mirror.nodeOf(index);
    if (node == RowTree::none)
        return;
    const bool matched = shown(node) != RowTree::none && matches(node);
    const bool accepted = m_rules->accepts(index);
    const bool regroups =
        matched && m_rules->groups() && m_mirror.type(rows().parent(node)) != m_rules->type(index);
    if (matched && (!accepted || regroups))
        hide(node);
    if (shown(node) != RowTree::none && m_rules->sortsBy(roles))
        moveToItsPlace(node);
    if (accepted && (!matched || regroups))
        show(node);
    // Names are part of what is below.
    if (m_rules->filters() && (roles.isEmpty() || roles.contains(Qt::DisplayRole)) &&
        m_mirror.rows().hasBranch(node))
        restart();
}

/// The row is to be placed once more, after this turn or the pass that is under way.
void OutlineModel::placeLater(const QModelIndex& index)
{
    if (std::find(m_changed.begin(), m_changed.end(), index) != m_changed.end())
        return;
    if (m_changed.size() < std::size_t(placedAtOnce))
        return void(m_changed.emplace_back(index));
    m_outdated = true;
    setWorking(true);
}

/// Rows that change together are told one by one, and each was compared with others that had new
/// values already but were in their old places.
void OutlineModel::placeAgain(const QVector<int>& roles)
{
    const std::vector<QPersistentModelIndex> changed = std::exchange(m_changed, {});
    for (const QPersistentModelIndex& index : changed)
        m_unplaced.push_back(m_mirror.nodeOf(index));
    for (const QPersistentModelIndex& index : changed) {
        m_unplaced.erase(m_unplaced.begin());
        if (index.isValid() && m_arranged)
            placeChanged(index, roles);
    }
}

/// A row that matches.
void OutlineModel::show(Node node)
{
    setMatchCount(m_rules->filters() ? m_matches + 1 : -1);
    m_mirror.marks().set(node, RowMarks::Leads, false);
    if (shown(node) != RowTree::none)
        return rowChanged(node, {MatchesRole});
    const Node parent = parentToShow(node);
    insertRow(node, parent, orderFor(node, parent));
}

/// A row that does not match any more.
void OutlineModel::hide(Node node)
{
    setMatchCount(m_rules->filters() ? m_matches - 1 : -1);
    if (!rows().hasBranch(node))
        return cutRows({rows().order(node), rows().order(node) + 1});
    m_mirror.marks().set(node, RowMarks::Leads, true);
    rowChanged(node, {MatchesRole});
}

/// Below what a row of the scene shows. Rows that lead to it come to show with it.
OutlineModel::Node OutlineModel::parentToShow(Node node)
{
    if (m_rules->groups()) {
        const QString type = m_rules->type(m_mirror.indexOf(node));
        const Node group = m_mirror.group(type);
        if (shown(group) != RowTree::none)
            return group;
        int number = 0;
        for (Node next = rows().child(RowTree::none, 0);
             next != RowTree::none && m_mirror.type(next) < type;)
            next = rows().child(RowTree::none, ++number);
        insertRow(group, RowTree::none, rows().orderOfChild(RowTree::none, number));
        return group;
    }
    if (!m_rules->nests())
        return RowTree::none;
    std::vector<Node> missing;
    Node parent = m_mirror.rows().parent(node);
    for (; parent != RowTree::none && shown(parent) == RowTree::none;
         parent = m_mirror.rows().parent(parent))
        missing.push_back(parent);
    for (; !missing.empty(); missing.pop_back()) {
        m_mirror.marks().set(missing.back(), RowMarks::Leads, true);
        insertRow(missing.back(), parent, orderFor(missing.back(), parent));
        parent = missing.back();
    }
    return parent;
}

void OutlineModel::insertRow(Node node, Node parent, int order)
{
    announceInsertion(rows().rowsBefore(order), rows().showsChildren(parent) ? 1 : 0);
    m_arranged->insert(order, m_arranged->build({{node, rows().childDepth(parent)}}), parent);
    endAnnounced();
    rowChanged(parent, {HasChildrenRole, m_countRole});
    // Its place was found among rows that may not be in theirs.
    if (!m_changed.empty() && m_rules->sorts() && !isGroupNode(node))
        placeLater(m_mirror.indexOf(node));
}

/// Cuts rows below one parent, and what only led to them.
void OutlineModel::cutRows(RowTree::Range orders)
{
    while (true) {
        const Node parent = rows().parent(rows().atOrder(orders.first));
        const RowTree::Range leaving = rows().rowsIn(orders);
        announceRemoval(leaving.first, leaving.count());
        m_arranged->takeApart(m_arranged->cut(orders));
        endAnnounced();
        if (parent == RowTree::none || rows().hasBranch(parent) ||
            (matches(parent) && !isGroupNode(parent)))
            return rowChanged(parent, {HasChildrenRole, m_countRole});
        orders = {rows().order(parent), rows().order(parent) + 1};
    }
}

/// Where a row of the scene belongs among the shown rows below `parent`, which are in order but for
/// those that are to be placed yet.
int OutlineModel::orderFor(Node node, Node parent) const
{
    const RowTree& scene = m_mirror.rows();
    const int sceneOrder = scene.order(node);
    const SortKey key = m_rules->sorts() ? m_rules->key(m_mirror.indexOf(node)) : SortKey();
    const auto isUnplaced = [this](Node other) {
        return std::find(m_unplaced.begin(), m_unplaced.end(), other) != m_unplaced.end();
    };
    const auto isBehind = [&](int number) {
        Node other = rows().child(parent, number);
        while (isUnplaced(other))
            other = rows().child(parent, ++number);
        if (other == RowTree::none)
            return false;
        if (m_rules->sorts()) {
            const SortKey otherKey = m_rules->key(m_mirror.indexOf(other));
            if (m_rules->precedes(otherKey, key) || m_rules->precedes(key, otherKey))
                return m_rules->precedes(otherKey, key);
        }
        return scene.order(other) < sceneOrder;
    };
    int end = 1;
    while (isBehind(end - 1))
        end *= 2;
    int first = end / 2;
    while (first < end) {
        const int middle = (first + end) / 2;
        if (isBehind(middle))
            first = middle + 1;
        else
            end = middle;
    }
    return rows().orderOfChild(parent, first);
}

/// A row that is sorted by something else now, with its branch.
void OutlineModel::moveToItsPlace(Node node)
{
    const Node parent = rows().parent(node);
    const RowTree::Range branch{rows().order(node), rows().branchEnd(node)};
    const RowTree::Range leaving = rows().rowsIn(branch);
    const Node block = m_arranged->cut(branch);
    const int target = orderFor(node, parent);
    const int row = rows().rowsBefore(target);
    m_arranged->insert(branch.first, block, parent);
    if (target == branch.first)
        return;
    announceMove(leaving.first, leaving.count(),
                 target > branch.first ? row + leaving.count() : row);
    m_arranged->insert(target, m_arranged->cut(branch), parent);
    endAnnounced();
}

} // namespace kyr::panel
