#include "scene_mirror.h"

#include <QVarLengthArray>

namespace kyr::panel {

namespace {

constexpr int rowsBetweenClockReads = 32;
/// Levels from one remembered index of a deep branch to the next.
constexpr int levelsBetweenIndexes = 16;

} // namespace

void SceneMirror::setModel(QAbstractItemModel* model)
{
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    m_change = {};
    m_states.clear();
    connectModel();
    start(wishes());
}

/// Reads all anew.
void SceneMirror::start(const FreshRows::StartOf& startOf)
{
    ++m_version;
    m_reader.reset();
    m_rows.clear();
    forgetIndexes();
    m_toWriteBack = 0;
    if (!m_model)
        return;
    m_expandedRole = m_model->roleNames().key("expanded", -1);
    FreshRows fresh(m_rows, *m_model, startOf);
    fresh.add({}, 0, 0, m_model->rowCount() - 1, 0);
    std::vector<Node> rows;
    while (!fresh.isDone())
        fresh.step(rows);
    m_rows.rebuild(rows);
}

FreshRows::StartOf SceneMirror::wishes() const
{
    return [this](const QModelIndex& index, quint32 parentFlags) -> quint32 {
        const quint32 ignores = parentFlags & RowTree::IgnoresWishes;
        const bool opens =
            ignores == 0 && m_expandedRole >= 0 && index.data(m_expandedRole).toBool();
        return ignores | (opens ? quint32(RowTree::Expanded) : 0u) |
               (opens || m_readsBranches ? 0u : quint32(RowTree::Unread));
    };
}

/// The same with everything below.
FreshRows::StartOf SceneMirror::allBelow() const
{
    return [start = wishes()](const QModelIndex& index, quint32 parentFlags) {
        return start(index, parentFlags) & ~quint32(RowTree::Unread);
    };
}

std::vector<SceneMirror::Node> SceneMirror::readRows(const QModelIndex& parent, quint32 parentFlags,
                                                     int first, int last, int depth) const
{
    FreshRows fresh(m_rows, *m_model, wishes());
    fresh.add(parent, parentFlags, first, last, depth);
    std::vector<Node> rows;
    while (!fresh.isDone())
        fresh.step(rows);
    return rows;
}

void SceneMirror::readChildren(Node node)
{
    if (!m_rows.has(node, RowTree::Unread))
        return;
    const QModelIndex index = indexOf(node);
    const std::vector<Node> rows = readRows(index, m_rows.flags(node), 0,
                                            m_model->rowCount(index) - 1, m_rows.depth(node) + 1);
    m_reader.reset();
    m_rows.set(node, RowTree::Unread, false);
    m_rows.insert(m_rows.order(node) + 1, m_rows.build(rows), node);
}

bool SceneMirror::readAll(const QDeadlineTimer& deadline)
{
    if (!m_model || (!m_reader && m_rows.unreadCount() == 0))
        return true;
    if (!m_reader)
        m_reader =
            std::make_unique<BranchReader>(m_rows, *m_model, walk(), RowTree::none, allBelow());
    for (int row = 1; !m_reader->step(); ++row) {
        if (row % rowsBetweenClockReads == 0 && deadline.hasExpired())
            return false;
    }
    const int before = m_rows.size();
    const std::vector<Node> rows = m_reader->take();
    m_reader.reset();
    if (int(rows.size()) > before)
        m_rows.rebuild(rows);
    return true;
}

RowWalk SceneMirror::walk() const
{
    return {m_rows, m_rows.at(0), m_model ? m_model->index(0, 0) : QModelIndex()};
}

QModelIndex SceneMirror::indexOf(Node node) const
{
    if (!m_model || node == RowTree::none)
        return {};
    QVarLengthArray<std::pair<Node, int>, 32> path;
    QModelIndex index;
    for (Node at = node; at != RowTree::none;) {
        if (at == m_lastParent) {
            index = m_lastParentIndex;
            break;
        }
        const RowTree::Place place = m_rows.place(at);
        if (const auto known = m_indexes.constFind(at);
            known != m_indexes.constEnd() && known->row() == place.number) {
            index = *known;
            break;
        }
        path.append({at, place.number});
        at = place.parent;
    }
    for (int level = path.size() - 1; level >= 0; --level) {
        const auto& [at, number] = path[level];
        index = m_model->index(number, 0, index);
        remember(at, index);
        if (level == 1) {
            m_lastParent = at;
            m_lastParentIndex = index;
        }
    }
    return index;
}

SceneMirror::Node SceneMirror::nodeOf(const QModelIndex& index) const
{
    return const_cast<SceneMirror*>(this)->find(index, false);
}

SceneMirror::Node SceneMirror::read(const QModelIndex& index)
{
    return find(index, true);
}

SceneMirror::Node SceneMirror::find(const QModelIndex& index, bool reads)
{
    if (!index.isValid() || index.model() != m_model || index.column() != 0)
        return RowTree::none;
    QVarLengthArray<QModelIndex, 32> path;
    Node node = RowTree::none;
    for (QModelIndex at = index; at.isValid(); at = at.parent()) {
        if (m_lastParent != RowTree::none && at == m_lastParentIndex) {
            node = m_lastParent;
            break;
        }
        if (!m_nodes.isEmpty()) {
            const auto known = m_nodes.constFind(at);
            if (known != m_nodes.constEnd() && m_rows.place(*known).number == at.row()) {
                node = *known;
                break;
            }
        }
        path.append(at);
    }
    for (int level = path.size() - 1; level >= 0; --level) {
        if (reads && node != RowTree::none)
            readChildren(node);
        node = m_rows.child(node, path[level].row());
        if (node == RowTree::none)
            return node;
        remember(node, path[level]);
        if (level == 1) {
            m_lastParent = node;
            m_lastParentIndex = path[level];
        }
    }
    return node;
}

/// An index is good until rows before it come or go, which its number tells, or it moves.
void SceneMirror::remember(Node node, const QModelIndex& index) const
{
    const int depth = m_rows.depth(node);
    if (depth == 0 || depth % levelsBetweenIndexes != 0)
        return;
    if (const auto old = m_indexes.constFind(node); old != m_indexes.constEnd())
        m_nodes.remove(*old);
    m_indexes.insert(node, index);
    m_nodes.insert(index, node);
}

void SceneMirror::forget(const std::vector<Node>& rows) const
{
    for (const Node node : rows) {
        if (m_indexes.isEmpty())
            return;
        if (const auto old = m_indexes.find(node); old != m_indexes.end()) {
            m_nodes.remove(*old);
            m_indexes.erase(old);
        }
    }
}

void SceneMirror::forgetIndexes() const
{
    m_lastParent = RowTree::none;
    m_indexes.clear();
    m_nodes.clear();
}

void SceneMirror::setBranchExpanded(Node node, bool on)
{
    if (on)
        readBranch(node);
    m_rows.setBranchExpanded(node, on);
}

void SceneMirror::readBranch(Node node)
{
    BranchReader reader(m_rows, *m_model, RowWalk(m_rows, node, indexOf(node)),
                        m_rows.afterBranch(node), allBelow());
    while (!reader.step()) {
    }
    m_reader.reset();
    const int order = m_rows.order(node) + 1;
    m_rows.cut(order, m_rows.branchEnd(node) - order);
    std::vector<Node> rows = reader.take();
    rows.erase(rows.begin());
    m_rows.insert(order, m_rows.build(rows), node);
}

void SceneMirror::setAllExpanded(bool on)
{
    if (on)
        readAll(QDeadlineTimer(QDeadlineTimer::Forever));
    m_rows.setAllExpanded(on);
}

void SceneMirror::setClosedWhileFound(Node node, bool on)
{
    m_rows.set(node, RowTree::ClosedWhileFound, on);
    m_anyClosedWhileFound = m_anyClosedWhileFound || on;
}

void SceneMirror::forgetFound()
{
    if (!std::exchange(m_anyClosedWhileFound, false))
        return;
    for (const Node node : m_rows.allRows())
        m_rows.set(node, RowTree::ClosedWhileFound, false);
}

void SceneMirror::writeBack(Node node)
{
    if (m_expandedRole < 0 || node == RowTree::none)
        return;
    const QModelIndex index = indexOf(node);
    const bool expanded = m_rows.has(node, RowTree::Expanded);
    if (index.data(m_expandedRole).toBool() != expanded)
        m_model->setData(index, expanded, m_expandedRole);
}

bool SceneMirror::writeAllBack(const QDeadlineTimer& deadline)
{
    Node node = m_expandedRole < 0 ? RowTree::none : m_rows.atOrder(m_toWriteBack);
    for (; node != RowTree::none; node = m_rows.next(node)) {
        if (m_rows.hasBranch(node) || m_rows.has(node, RowTree::IgnoresWishes))
            writeBack(node);
        if (++m_toWriteBack % rowsBetweenClockReads == 0 && deadline.hasExpired())
            return false;
    }
    m_toWriteBack = 0;
    return true;
}

void SceneMirror::mark(const QItemSelection& ranges, bool selected, std::vector<Node>& changed)
{
    const std::size_t before = changed.size();
    for (const QItemSelectionRange& range : ranges) {
        if (!range.isValid() || range.model() != m_model || range.left() > 0)
            continue;
        Node parent = RowTree::none;
        if (range.parent().isValid()) {
            parent = find(range.parent(), selected);
            if (parent == RowTree::none)
                continue;
            if (selected)
                readChildren(parent);
        }
        Node node = m_rows.child(parent, range.top());
        for (int number = range.top(); number <= range.bottom() && node != RowTree::none;
             ++number) {
            if (m_rows.has(node, RowTree::Selected) != selected) {
                m_rows.set(node, RowTree::Selected, selected);
                changed.push_back(node);
            }
            if (number < range.bottom())
                node = m_rows.afterBranch(node);
        }
    }
    m_rows.mark({changed.begin() + std::ptrdiff_t(before), changed.end()}, selected);
}

void SceneMirror::clearMarks()
{
    std::vector<Node> marked;
    for (const Node node : m_rows.allRows()) {
        if (m_rows.has(node, RowTree::Selected))
            marked.push_back(node);
    }
    m_rows.mark(marked, false);
}

} // namespace kyr::panel
