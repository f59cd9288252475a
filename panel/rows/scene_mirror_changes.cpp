// How a mirror follows its scene. It tells of a change when the scene does and makes it when the
// scene has; in between, the row numbers of both stay in step.

#include "scene_mirror.h"

namespace kyr::panel {

namespace {

constexpr quint32 keptFlags =
    RowTree::Expanded | RowTree::IgnoresWishes | RowTree::ClosedWhileFound;

} // namespace

void SceneMirror::connectModel()
{
    if (!m_model)
        return;
    using Model = QAbstractItemModel;
    connect(m_model, &Model::rowsAboutToBeInserted, this, &SceneMirror::beginInsertion);
    connect(m_model, &Model::rowsInserted, this, &SceneMirror::endInsertion);
    connect(m_model, &Model::rowsAboutToBeRemoved, this, &SceneMirror::beginRemoval);
    connect(m_model, &Model::rowsRemoved, this, &SceneMirror::endRemoval);
    connect(m_model, &Model::rowsAboutToBeMoved, this, &SceneMirror::beginMove);
    connect(m_model, &Model::rowsMoved, this,
            [this](const QModelIndex& from, int, int, const QModelIndex& to, int target) {
                endMove(from, to, target);
            });
    connect(m_model, &Model::layoutAboutToBeChanged, this, &SceneMirror::beginLayoutChange);
    connect(m_model, &Model::layoutChanged, this, &SceneMirror::endLayoutChange);
    connect(m_model, &Model::modelAboutToBeReset, this, &SceneMirror::beginReset);
    connect(m_model, &Model::modelReset, this, &SceneMirror::endReset);
    connect(m_model, &Model::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles) {
                if (!isChanging() && first.isValid() && last.isValid())
                    m_observer.dataChanged(first, last, roles);
            });
    connect(m_model, &QObject::destroyed, this, [this] {
        beginReset();
        setModel(nullptr);
        m_change.kind = Change::Reset;
        endReset();
    });
}

void SceneMirror::begin(Change::Kind kind)
{
    ++m_version;
    m_change = {};
    m_change.kind = kind;
    m_reader.reset();
    m_toWriteBack = 0;
    m_lastParent = RowTree::none;
    m_observer.beginChange();
}

void SceneMirror::end(Change::Kind kind)
{
    m_change = {};
    m_lastParent = RowTree::none;
    if (kind != Change::Nothing)
        m_observer.endChange();
}

bool SceneMirror::knowsChildren(const QModelIndex& parent, Node& node)
{
    node = nodeOf(parent);
    return !parent.isValid() || (node != RowTree::none && !m_rows.has(node, RowTree::Unread));
}

void SceneMirror::beginInsertion(const QModelIndex& parent, int first, int last)
{
    begin(Change::Insert);
    Change& change = m_change;
    change.known = knowsChildren(parent, change.to);
    // After all was closed, what comes starts as it wishes and what was there does not, which only
    // rows that are known can tell.
    if (change.to != RowTree::none && m_rows.has(change.to, RowTree::IgnoresWishes)) {
        readChildren(change.to);
        change.known = true;
    }
    if (!change.known)
        return;
    change.target = m_rows.orderOfChild(change.to, first);
    change.count = last - first + 1;
    m_observer.aboutToInsert(change.to, change.target, change.count);
}

void SceneMirror::endInsertion(const QModelIndex& parent, int first, int last)
{
    if (m_change.kind != Change::Insert)
        return;
    const Change change = m_change;
    std::vector<Node> wishing;
    if (change.known) {
        const std::vector<Node> rows =
            readRows(parent, 0, first, last, m_rows.childDepth(change.to));
        // The announced rows are the inserted ones alone; those that wish so are opened later.
        for (const Node row : rows) {
            if (m_rows.depth(row) == m_rows.childDepth(change.to) &&
                m_rows.has(row, RowTree::Expanded)) {
                m_rows.set(row, RowTree::Expanded, false);
                wishing.push_back(row);
            }
        }
        m_rows.insert(change.target, m_rows.build(rows), change.to);
        m_lastParent = RowTree::none;
        m_observer.inserted(change.to, change.target, int(rows.size()));
    }
    end(Change::Insert);
    for (const Node row : wishing)
        m_observer.wishesToOpen(row);
    m_observer.childrenChanged(parent);
}

void SceneMirror::beginRemoval(const QModelIndex& parent, int first, int last)
{
    begin(Change::Remove);
    Change& change = m_change;
    change.known = knowsChildren(parent, change.from);
    if (!change.known)
        return;
    change.order = m_rows.orderOfChild(change.from, first);
    change.count = m_rows.orderOfChild(change.from, last + 1) - change.order;
    m_observer.aboutToRemove(change.from, change.order, change.count);
}

void SceneMirror::endRemoval(const QModelIndex& parent)
{
    if (m_change.kind != Change::Remove)
        return;
    if (m_change.known) {
        const std::vector<Node> rows = m_rows.rowsOf(m_rows.cut(m_change.order, m_change.count));
        forget(rows);
        m_rows.destroy(rows);
        m_lastParent = RowTree::none;
        m_observer.removed();
    }
    end(Change::Remove);
    m_observer.childrenChanged(parent);
}

void SceneMirror::beginMove(const QModelIndex& from, int first, int last, const QModelIndex& to,
                            int target)
{
    begin(Change::Move);
    Change& change = m_change;
    change.known = knowsChildren(from, change.from);
    change.count = last - first + 1;
    if (change.known) {
        // Rows that are known stay known where they go.
        change.to = read(to);
        if (to.isValid())
            readChildren(change.to);
        change.order = m_rows.orderOfChild(change.from, first);
        change.count = m_rows.orderOfChild(change.from, last + 1) - change.order;
        change.target = m_rows.orderOfChild(change.to, target);
        m_observer.aboutToMove(change.from, change.order, change.count, change.to, change.target);
    } else if (knowsChildren(to, change.to)) {
        change.known = true;
        change.kind = Change::Insert;
        change.target = m_rows.orderOfChild(change.to, target);
        m_observer.aboutToInsert(change.to, change.target, change.count);
    }
}

void SceneMirror::endMove(const QModelIndex& from, const QModelIndex& to, int target)
{
    Change& change = m_change;
    if (change.kind == Change::Insert) {
        const std::vector<Node> rows =
            readRows(to, RowTree::IgnoresWishes, target, target + change.count - 1,
                     m_rows.childDepth(change.to));
        m_rows.insert(change.target, m_rows.build(rows), change.to);
        m_lastParent = RowTree::none;
        m_observer.inserted(change.to, change.target, int(rows.size()));
    } else if (change.kind == Change::Move && change.known) {
        const int depth = m_rows.childDepth(change.to) - m_rows.childDepth(change.from);
        const Node block = m_rows.cut(change.order, change.count);
        if (change.target > change.order)
            change.target -= change.count;
        m_rows.shiftDepth(block, depth);
        forget(m_rows.rowsOf(block));
        m_rows.insert(change.target, block, change.to);
        m_lastParent = RowTree::none;
        m_observer.moved(change.from, change.to, change.target, change.count);
    } else if (change.kind != Change::Move) {
        return;
    }
    end(Change::Move);
    m_observer.childrenChanged(from);
    m_observer.childrenChanged(to);
}

void SceneMirror::beginLayoutChange()
{
    begin(Change::Layout);
    m_observer.aboutToRelayout();
    m_states.clear();
    for (RowWalk row = walk(); !row.atEnd(); row.next()) {
        const quint32 flags = m_rows.flags(row.node());
        if ((flags & keptFlags) != 0 || m_rows.hasBranch(row.node()))
            m_states.emplace_back(row.index(), flags & (keptFlags | RowTree::Unread));
    }
}

void SceneMirror::endLayoutChange()
{
    if (m_change.kind != Change::Layout)
        return;
    QHash<QModelIndex, quint32> states;
    states.reserve(int(m_states.size()));
    for (const auto& [index, flags] : m_states)
        states.insert(index, flags);
    m_states.clear();
    const quint32 unknown = m_readsBranches ? 0u : quint32(RowTree::Unread);
    start([&](const QModelIndex& index, quint32) { return states.value(index, unknown); });
    m_observer.relaidOut();
    end(Change::Layout);
}

void SceneMirror::beginReset()
{
    begin(Change::Reset);
    m_observer.aboutToReset();
}

void SceneMirror::endReset()
{
    if (m_change.kind != Change::Reset)
        return;
    start(wishes());
    m_observer.wasReset();
    end(Change::Reset);
}

} // namespace kyr::panel
