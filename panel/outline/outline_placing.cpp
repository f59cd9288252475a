// Rows of an arrangement that come, go and change places one by one as the scene changes. Very many
// at once are left to the next pass.

#include "outline_core.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace kyr::panel {

namespace {

/// More rows than this in one signal, or in one turn of the event loop, are not placed one by one.
constexpr int placedAtOnce = 64;
constexpr int placedInATurn = 1024;

} // namespace

/// Whether so many rows are placed here, and not by the pass that comes or is under way.
bool OutlineModel::Core::placesRows(int count)
{
    if (m_working)
        return false;
    m_touched += count;
    if (count <= placedAtOnce && m_touched <= placedInATurn) {
        m_slices.start(); // ends the turn
        return true;
    }
    restart();
    return false;
}

void OutlineModel::Core::placeNew(int order, int count)
{
    if (!placesRows(count))
        return;
    Node node = m_mirror.rows().atOrder(order);
    for (int row = 0; row < count; ++row, node = m_mirror.rows().next(node)) {
        if (m_rules->accepts(m_mirror.indexOf(node)))
            show(node);
    }
}

void OutlineModel::Core::placeMoved(int order, int count)
{
    if (!placesRows(count))
        return;
    const RowTree& all = m_mirror.rows();
    Node node = all.atOrder(order);
    const int top = all.depth(node);
    std::vector<Node> moved;
    for (int row = 0; row < count; ++row, node = all.next(node)) {
        if (shownNode(node) != RowTree::none && (!m_rules->nests() || all.depth(node) == top))
            moved.push_back(node);
    }
    // Those that still are where they were may not stand in the way of the others.
    if (m_movesDown)
        std::reverse(moved.begin(), moved.end());
    for (const Node scene : moved) {
        const Node shown = shownNode(scene);
        const Node left = rows().place(shown).parent;
        moveBranch(shown, m_rules->nests() ? parentToShow(scene) : left);
        if (m_rules->nests())
            hideEmpty(left);
    }
    // What is above a row may decide whether it matches.
    if (m_rules->filters())
        restart();
}

void OutlineModel::Core::placeChanged(const QModelIndex& first, const QModelIndex& last,
                                      const QVector<int>& roles)
{
    const int count = last.row() - first.row() + 1;
    if (m_working)
        noteChange(first, last);
    else
        placesRows(count);
    if (count > placedAtOnce) {
        allChanged(roles);
        return;
    }
    for (int row = first.row(); row <= last.row(); ++row) {
        const QModelIndex index = first.sibling(row, 0);
        if (const Node node = m_mirror.nodeOf(index); node != RowTree::none)
            placeChanged(node, index, roles);
    }
}

/// Rows that change while a pass is under way, which may have been there already.
void OutlineModel::Core::noteChange(const QModelIndex& first, const QModelIndex& last)
{
    if (last.row() - first.row() >= placedAtOnce) {
        restart();
        return;
    }
    for (int row = first.row(); row <= last.row(); ++row)
        m_changedMeanwhile.emplace_back(first.sibling(row, 0));
}

void OutlineModel::Core::placeChanged(Node node, const QModelIndex& index,
                                      const QVector<int>& roles)
{
    const auto concerns = [&roles](int role) { return roles.isEmpty() || roles.contains(role); };
    Node shown = shownNode(node);
    if (!m_working) {
        const bool matched = shown != RowTree::none && matches(shown);
        const bool accepted = m_rules->accepts(index);
        const bool regroups = matched && m_rules->groups() &&
                              m_arranged->type(rows().place(shown).parent) != m_rules->type(index);
        if (matched && (!accepted || regroups))
            hide(shown);
        shown = shownNode(node);
        if (shown != RowTree::none && m_rules->sorts() && concerns(m_settings.sortRole))
            moveBranch(shown, rows().place(shown).parent);
        if (accepted && (!matched || regroups))
            show(node);
        shown = shownNode(node);
        if (m_rules->filters() && concerns(Qt::DisplayRole) && m_mirror.rows().hasBranch(node))
            restart();
    }
    rowChanged(shown, roles);
}

void OutlineModel::Core::show(Node scene)
{
    setMatchCount(m_rules->filters() ? m_matches + 1 : -1);
    const Node known = shownNode(scene);
    if (known != RowTree::none) {
        m_arranged->tree.set(known, RowTree::Leads, false);
        rowChanged(known, {MatchesRole});
        return;
    }
    const Node parent = parentToShow(scene);
    insertRow(scene, parent, false);
    if (m_arranged->isGroup(parent))
        rowChanged(parent, {m_countRole});
}

/// Below what a row of the scene shows. Rows that lead to it come to show with it.
OutlineModel::Core::Node OutlineModel::Core::parentToShow(Node scene)
{
    if (m_rules->groups())
        return groupToShow(m_rules->type(m_mirror.indexOf(scene)));
    if (!m_rules->nests())
        return RowTree::none;
    std::vector<Node> missing;
    Node above = m_mirror.rows().place(scene).parent;
    for (; above != RowTree::none && shownNode(above) == RowTree::none;
         above = m_mirror.rows().place(above).parent)
        missing.push_back(above);
    Node parent = shownNode(above);
    for (; !missing.empty(); missing.pop_back())
        parent = insertRow(missing.back(), parent, true);
    return parent;
}

OutlineModel::Core::Node OutlineModel::Core::groupToShow(const QString& type)
{
    if (const Node known = m_arranged->group(type); known != RowTree::none)
        return known;
    RowTree& tree = m_arranged->tree;
    int number = 0;
    Node next = tree.child(RowTree::none, 0);
    while (next != RowTree::none && m_arranged->type(next) < type)
        next = tree.child(RowTree::none, ++number);
    const int order = tree.orderOfChild(RowTree::none, number);
    const bool closed = m_closedGroups.contains(type);
    const Node group = m_arranged->createGroup(type, closed ? 0u : quint32(RowTree::Expanded));
    announceInsertion(tree.rowsBefore(order), 1);
    tree.insert(order, tree.build({group}), RowTree::none);
    endAnnounced();
    return group;
}

OutlineModel::Core::Node OutlineModel::Core::insertRow(Node scene, Node parent, bool leads)
{
    RowTree& tree = m_arranged->tree;
    const RowTree& all = m_mirror.rows();
    const int order = orderFor(scene, parent);
    const bool first = parent != RowTree::none && !tree.hasBranch(parent);
    const quint32 flags = (leads ? quint32(RowTree::Leads) : 0u) |
                          (m_rules->startsOpen(all, scene) ? quint32(RowTree::Expanded) : 0u) |
                          (all.flags(scene) & quint32(RowTree::Selected));
    const Node shown = m_arranged->create(scene, tree.childDepth(parent), flags);
    if (tree.showsChildren(parent))
        announceInsertion(tree.rowsBefore(order), 1);
    tree.insert(order, tree.build({shown}), parent);
    endAnnounced();
    if (first)
        rowChanged(parent, {HasChildrenRole});
    return shown;
}

/// Where a row of the scene belongs among the shown rows below `parent`, which are in order.
int OutlineModel::Core::orderFor(Node scene, Node parent) const
{
    const RowTree& all = m_mirror.rows();
    const int sceneOrder = all.order(scene);
    const SortKey key = m_rules->sorts() ? m_rules->key(m_mirror.indexOf(scene)) : SortKey();
    const auto isBehind = [&](int number) {
        const Node child = rows().child(parent, number);
        if (child == RowTree::none)
            return false;
        const Node other = sceneNode(child);
        if (m_rules->sorts()) {
            const SortKey otherKey = m_rules->key(m_mirror.indexOf(other));
            if (m_rules->precedes(otherKey, key) || m_rules->precedes(key, otherKey))
                return m_rules->precedes(otherKey, key);
        }
        return all.order(other) < sceneOrder;
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

/// A row that does not match any more.
void OutlineModel::Core::hide(Node shown)
{
    setMatchCount(m_rules->filters() ? m_matches - 1 : -1);
    if (rows().hasBranch(shown)) {
        m_arranged->tree.set(shown, RowTree::Leads, true);
        rowChanged(shown, {MatchesRole});
        return;
    }
    const Node parent = rows().place(shown).parent;
    cutRows(rows().order(shown), 1);
    hideEmpty(parent);
}

/// Hides what led to rows that are gone.
void OutlineModel::Core::hideEmpty(Node parent)
{
    while (parent != RowTree::none && !rows().hasBranch(parent) &&
           (m_arranged->isGroup(parent) || !matches(parent))) {
        const Node above = rows().place(parent).parent;
        cutRows(rows().order(parent), 1);
        parent = above;
    }
    if (parent != RowTree::none)
        rowChanged(parent, {HasChildrenRole, m_countRole});
}

void OutlineModel::Core::cutRows(int order, int count)
{
    RowTree& tree = m_arranged->tree;
    const int first = tree.rowsBefore(order);
    announceRemoval(first, tree.rowsBefore(order + count) - first);
    m_arranged->destroy(tree.rowsOf(tree.cut(order, count)));
    endAnnounced();
}

/// Rows of the scene that go.
void OutlineModel::Core::takeAway(int order, int count)
{
    const RowTree& all = m_mirror.rows();
    Node node = all.atOrder(order);
    const int top = all.depth(node);
    std::vector<std::pair<int, int>> runs;
    int matching = 0;
    for (int row = 0; row < count; ++row, node = all.next(node)) {
        const Node shown = shownNode(node);
        if (shown == RowTree::none)
            continue;
        matching += matches(shown) ? 1 : 0;
        if (m_rules->nests() && all.depth(node) > top)
            continue;
        const int at = rows().order(shown);
        runs.emplace_back(at, m_rules->nests() ? rows().branchEnd(shown) - at : 1);
    }
    std::sort(runs.begin(), runs.end());
    std::size_t last = 0;
    for (std::size_t run = 1; run < runs.size(); ++run) {
        if (runs[run].first == runs[last].first + runs[last].second)
            runs[last].second += runs[run].second;
        else
            runs[++last] = runs[run];
    }
    runs.resize(runs.empty() ? 0 : last + 1);
    const QScopedValueRollback<bool> quiet(m_quiet, runs.size() > std::size_t(placedAtOnce));
    if (m_quiet)
        q.beginResetModel();
    for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
        const Node parent = rows().place(rows().atOrder(run->first)).parent;
        cutRows(run->first, run->second);
        hideEmpty(parent);
    }
    if (m_quiet)
        q.endResetModel();
    if (m_rules->filters())
        setMatchCount(m_matches - matching);
}

/// Puts a branch where it belongs now, below this parent.
void OutlineModel::Core::moveBranch(Node shown, Node parent)
{
    RowTree& tree = m_arranged->tree;
    const Node left = tree.place(shown).parent;
    const int order = tree.order(shown);
    const int count = tree.branchEnd(shown) - order;
    const int first = tree.rowsBefore(order);
    const int leaving = tree.rowsBefore(order + count) - first;
    const bool wasEmpty = parent != RowTree::none && !tree.hasBranch(parent);
    Node block = tree.cut(order, count);
    const int target = orderFor(m_arranged->sceneNode(shown), parent);
    const int row = tree.rowsBefore(target);
    const int arriving = tree.showsChildren(parent) ? tree.shownInBlock(block) : 0;
    tree.insert(order, block, left);
    if (arriving > 0 && leaving > 0)
        announceMove(first, leaving, target > order ? row + leaving : row);
    else if (leaving > 0)
        announceRemoval(first, leaving);
    else
        announceInsertion(row, arriving);
    const int depth = tree.depth(shown);
    block = tree.cut(order, count);
    tree.shiftDepth(block, tree.childDepth(parent) - depth);
    tree.insert(target, block, parent);
    endAnnounced();
    if (depth != tree.depth(shown) && arriving > 0)
        Q_EMIT q.dataChanged(q.index(row), q.index(row + arriving - 1), {DepthRole});
    if (wasEmpty)
        rowChanged(parent, {HasChildrenRole});
}

} // namespace kyr::panel
