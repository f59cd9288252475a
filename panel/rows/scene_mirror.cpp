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
    m_change.reset();
    for (const Node group : std::exchange(m_groups, {}))
        m_marks.destroy(group);
    m_types.clear();
    connectModel();
    start();
}

/// Reads all anew but what is known, if that is given; the scene's wishes are met already then.
void SceneMirror::start(const QHash<QModelIndex, Node>* known)
{
    ++m_version;
    m_reader.reset();
    forgetLast();
    m_indexes.clear();
    m_nodes.clear();
    m_toWriteBack = 0;
    const QList<Node> kept = known ? known->values() : QList<Node>();
    const QSet<Node> keptNodes(kept.begin(), kept.end());
    for (const RowTree::Row& row : m_rows.allRows()) {
        if (!keptNodes.contains(row.node))
            m_marks.destroy(row.node);
    }
    m_expandedRole = m_model ? m_model->roleNames().key("expanded", -1) : -1;
    m_rows.rebuild(m_model ? readRows({}, 0, m_model->rowCount() - 1, 0, known)
                           : std::vector<RowTree::Row>());
}

std::vector<RowTree::Row> SceneMirror::readRows(const QModelIndex& parent, int first, int last,
                                                int depth, const QHash<QModelIndex, Node>* known)
{
    const QHash<QModelIndex, Node> nothing;
    SceneReader reader(m_marks, *m_model,
                       {known ? -1 : m_expandedRole, m_readsBranches, known ? *known : nothing});
    reader.add(parent, first, last, depth);
    while (reader.step()) {
    }
    return reader.take();
}

void SceneMirror::readChildren(Node node)
{
    if (!m_marks.has(node, RowMarks::Unread))
        return;
    m_reader.reset();
    const QModelIndex index = indexOf(node);
    const int last = m_model->rowCount(index) - 1;
    m_marks.set(node, RowMarks::Unread, false);
    m_rows.insert(m_rows.order(node) + 1,
                  m_rows.build(readRows(index, 0, last, m_rows.depth(node) + 1)), node);
}

bool SceneMirror::readAll(const QDeadlineTimer& deadline)
{
    if (!m_model || m_marks.count(RowMarks::Unread) == 0)
        return true;
    if (!m_reader) {
        m_reader = std::make_unique<SceneReader>(m_marks, *m_model,
                                                 SceneReader::Start{m_expandedRole, true, {}});
        m_reader->add(m_rows, walk(), RowTree::none);
    }
    for (int row = 1; m_reader->step(); ++row) {
        if (row % rowsBetweenClockReads == 0 && deadline.hasExpired())
            return false;
    }
    m_rows.rebuild(m_reader->take());
    m_reader.reset();
    return true;
}

void SceneMirror::readBranch(Node node)
{
    m_reader.reset();
    SceneReader reader(m_marks, *m_model, {m_expandedRole, true, {}});
    reader.add(m_rows, RowWalk(m_rows, node, indexOf(node)), m_rows.afterBranch(node));
    while (reader.step()) {
    }
    std::vector<RowTree::Row> rows = reader.take();
    rows.erase(rows.begin());
    const RowTree::Range below = m_rows.below(node);
    m_rows.takeApart(m_rows.cut(below));
    m_rows.insert(below.first, m_rows.build(rows), node);
}

RowWalk SceneMirror::walk() const
{
    return {m_rows, m_rows.at(0), m_model ? m_model->index(0, 0) : QModelIndex()};
}

SceneMirror::Node SceneMirror::group(const QString& type)
{
    Node& group = m_groups[type];
    if (group == RowTree::none) {
        group = m_marks.create({RowMarks::Group});
        m_types.insert(group, type);
    }
    return group;
}

QModelIndex SceneMirror::indexOf(Node node) const
{
    if (!m_model || !m_rows.contains(node))
        return {};
    QVarLengthArray<std::pair<Node, int>, 32> path;
    QModelIndex index;
    for (Node at = node; at != RowTree::none;) {
        if (at == m_lastParent) {
            index = m_lastParentIndex;
            break;
        }
        const RowTree::Place place = m_rows.place(at);
        if (const auto known = m_indexes.isEmpty() ? m_indexes.constEnd() : m_indexes.constFind(at);
            known != m_indexes.constEnd() && known->row() == place.number) {
            index = *known;
            break;
        }
        path.append({at, place.number});
        at = place.parent;
    }
    for (int level = path.size() - 1; level >= 0; --level) {
        index = m_model->index(path[level].second, 0, index);
        remember(path[level].first, index);
        if (level == 1) {
            m_lastParent = path[level].first;
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

/// Reads what leads to the row, if it may.
SceneMirror::Node SceneMirror::find(QModelIndex index, bool reads)
{
    if (!m_model || index.model() != m_model)
        return RowTree::none;
    QVarLengthArray<QModelIndex, 32> path;
    Node node = RowTree::none;
    for (index = index.siblingAtColumn(0); index.isValid(); index = index.parent()) {
        if (m_lastParent != RowTree::none && index == m_lastParentIndex) {
            node = m_lastParent;
            break;
        }
        const auto known = m_nodes.isEmpty() ? m_nodes.constEnd() : m_nodes.constFind(index);
        if (known != m_nodes.constEnd() && m_rows.place(*known).number == index.row()) {
            node = *known;
            break;
        }
        path.append(index);
    }
    for (int level = path.size() - 1; level >= 0; --level) {
        if (reads && node != RowTree::none)
            readChildren(node);
        node = child(node, path[level].row());
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

/// Whoever asks for a row often asks for the one behind it next.
SceneMirror::Node SceneMirror::child(Node parent, int number) const
{
    const auto depth = std::size_t(m_rows.childDepth(parent));
    Found& last = m_lastChildren[depth % m_lastChildren.size()];
    const bool known = last.node != RowTree::none && last.place.parent == parent;
    if (known && last.place.number == number)
        return last.node;
    Node node = RowTree::none;
    if (known && last.place.number + 1 == number) {
        node = m_rows.afterBranch(last.node);
        if (node != RowTree::none && m_rows.depth(node) != int(depth))
            node = RowTree::none;
    } else {
        node = m_rows.child(parent, number);
    }
    last = {node, {parent, number}};
    return node;
}

void SceneMirror::forgetLast() const
{
    m_lastParent = RowTree::none;
    m_lastChildren = {};
}

/// An index is good until rows before it come or go, which its number tells, or it moves.
void SceneMirror::remember(Node node, const QModelIndex& index) const
{
    const int depth = m_rows.depth(node);
    if (depth == 0 || depth % levelsBetweenIndexes != 0)
        return;
    forget(node);
    m_indexes.insert(node, index);
    m_nodes.insert(index, node);
}

void SceneMirror::forget(Node node) const
{
    if (m_indexes.isEmpty())
        return;
    if (const auto old = m_indexes.find(node); old != m_indexes.end()) {
        m_nodes.remove(*old);
        m_indexes.erase(old);
    }
}

void SceneMirror::setOpen(Node node, RowTree::Range below, bool on)
{
    if (m_rows.isOpen(node) == on)
        return;
    m_marks.set(node, RowMarks::Closed, !on);
    m_rows.opened(node, below, on);
}

void SceneMirror::setBranchOpen(Node node, bool on)
{
    readBranch(node);
    m_toWriteBack = 0;
    m_rows.setBranchOpen(node, on);
}

void SceneMirror::setAllOpen(bool on)
{
    readAll(QDeadlineTimer(QDeadlineTimer::Forever));
    m_toWriteBack = 0;
    m_rows.setAllOpen(on);
}

void SceneMirror::writeBack(Node node)
{
    if (m_expandedRole < 0)
        return;
    const QModelIndex index = indexOf(node);
    if (index.data(m_expandedRole).toBool() != m_rows.isOpen(node))
        m_model->setData(index, m_rows.isOpen(node), m_expandedRole);
}

bool SceneMirror::writeAllBack(const QDeadlineTimer& deadline)
{
    Node node = m_expandedRole < 0 ? RowTree::none : m_rows.atOrder(m_toWriteBack);
    for (; node != RowTree::none; node = m_rows.next(node)) {
        if (m_rows.hasBranch(node))
            writeBack(node);
        if (++m_toWriteBack % rowsBetweenClockReads == 0 && deadline.hasExpired())
            return false;
    }
    m_toWriteBack = 0;
    return true;
}

void SceneMirror::forgetClosedWhileFound()
{
    if (m_marks.count(RowMarks::ClosedWhileFound) == 0)
        return;
    for (const RowTree::Row& row : m_rows.allRows())
        m_marks.set(row.node, RowMarks::ClosedWhileFound, false);
}

std::vector<SceneMirror::Node> SceneMirror::select(const QItemSelection& ranges, bool on)
{
    struct Run
    {
        Node first;
        int count;
    };
    // Rows that are read count the marks beside them, so that all are read before the first mark.
    std::vector<Run> runs;
    runs.reserve(std::size_t(ranges.size()));
    for (const QItemSelectionRange& range : ranges) {
        if (range.isValid() && range.model() == m_model && range.left() == 0)
            runs.push_back({find(range.topLeft(), on), range.height()});
    }
    std::vector<Node> changed;
    for (const Run& run : runs) {
        Node node = run.first;
        for (int left = run.count; left > 0 && node != RowTree::none; --left) {
            if (m_marks.has(node, RowMarks::Selected) != on)
                changed.push_back(node);
            m_marks.set(node, RowMarks::Selected, on);
            if (left > 1)
                node = m_rows.afterBranch(node);
        }
    }
    m_rows.selected(changed, on);
    return changed;
}

void SceneMirror::clearSelection()
{
    std::vector<Node> changed;
    Node node = m_marks.count(RowMarks::Selected) > 0 ? m_rows.atOrder(0) : RowTree::none;
    for (; node != RowTree::none; node = m_rows.next(node)) {
        if (m_marks.has(node, RowMarks::Selected))
            changed.push_back(node);
        m_marks.set(node, RowMarks::Selected, false);
    }
    m_rows.selected(changed, false);
}

} // namespace kyr::panel
