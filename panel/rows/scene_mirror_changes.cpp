// How a mirror follows its scene. It tells of a change when the scene does and makes it when the
// scene has; in between, the row numbers of both stay in step.

#include "scene_mirror.h"

namespace kyr::panel {

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
            [this](const QModelIndex&, int first, int last, const QModelIndex& to, int target) {
                endMove(first, last, to, target);
            });
    connect(m_model, &Model::layoutAboutToBeChanged, this, &SceneMirror::beginLayoutChange);
    connect(m_model, &Model::layoutChanged, this, &SceneMirror::endReset);
    connect(m_model, &Model::modelAboutToBeReset, this, &SceneMirror::beginReset);
    connect(m_model, &Model::modelReset, this, &SceneMirror::endReset);
    connect(m_model, &Model::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles) {
                if (!isChanging() && first.isValid() && last.isValid())
                    Q_EMIT dataChanged(first, last, roles);
            });
    connect(m_model, &QObject::destroyed, this, [this] {
        beginReset();
        setModel(nullptr);
        m_change.emplace().kind = SceneChange::Reset;
        endReset();
    });
}

SceneChange& SceneMirror::begin(SceneChange::Kind kind)
{
    ++m_version;
    m_reader.reset();
    m_toWriteBack = 0;
    forgetLast();
    m_change.emplace().kind = kind;
    return *m_change;
}

void SceneMirror::end()
{
    forgetLast();
    const SceneChange change = *m_change;
    m_change.reset();
    Q_EMIT changed(change);
}

/// Whether the children of a row are read; gives the row, none for the root.
bool SceneMirror::knowsChildren(const QModelIndex& parent, Node& node)
{
    node = nodeOf(parent);
    return !parent.isValid() || (node != RowTree::none && !m_marks.has(node, RowMarks::Unread));
}

/// Where these children are with all below them.
RowTree::Range SceneMirror::children(Node parent, int first, int last) const
{
    return {m_rows.orderOfChild(parent, first), m_rows.orderOfChild(parent, last + 1)};
}

void SceneMirror::beginInsertion(const QModelIndex& parent, int first, int last)
{
    SceneChange& change = begin(SceneChange::Unseen);
    if (knowsChildren(parent, change.to)) {
        change.kind = SceneChange::Insert;
        change.target = m_rows.orderOfChild(change.to, first);
        change.orders = {change.target, change.target + last - first + 1};
    }
    Q_EMIT aboutToChange(change);
}

void SceneMirror::endInsertion(const QModelIndex& parent, int first, int last)
{
    if (!m_change)
        return;
    if (m_change->kind == SceneChange::Insert) {
        const std::vector<RowTree::Row> rows =
            readRows(parent, first, last, m_rows.childDepth(m_change->to));
        // The announced rows are the inserted ones alone; those that wish so are opened later.
        for (const RowTree::Row& row : rows) {
            if (row.depth == rows.front().depth && m_rows.isOpen(row.node)) {
                m_marks.set(row.node, RowMarks::Closed, true);
                m_change->wishing.push_back(row.node);
            }
        }
        m_rows.insert(m_change->target, m_rows.build(rows), m_change->to);
        m_change->orders.end = m_change->target + int(rows.size());
    }
    end();
}

void SceneMirror::beginRemoval(const QModelIndex& parent, int first, int last)
{
    SceneChange& change = begin(SceneChange::Unseen);
    if (knowsChildren(parent, change.from)) {
        change.kind = SceneChange::Remove;
        change.orders = children(change.from, first, last);
    }
    Q_EMIT aboutToChange(change);
}

void SceneMirror::endRemoval()
{
    if (!m_change)
        return;
    if (m_change->kind == SceneChange::Remove) {
        for (const RowTree::Row& row : m_rows.takeApart(m_rows.cut(m_change->orders))) {
            forget(row.node);
            m_marks.destroy(row.node);
        }
    }
    end();
}

void SceneMirror::beginMove(const QModelIndex& from, int first, int last, const QModelIndex& to,
                            int target)
{
    SceneChange& change = begin(SceneChange::Unseen);
    if (knowsChildren(from, change.from)) {
        // Rows that are known stay known where they go.
        change.kind = SceneChange::Move;
        change.to = read(to);
        if (to.isValid())
            readChildren(change.to);
        change.orders = children(change.from, first, last);
        change.target = m_rows.orderOfChild(change.to, target);
    } else if (knowsChildren(to, change.to)) {
        change.kind = SceneChange::Insert;
        change.target = m_rows.orderOfChild(change.to, target);
        change.orders = {change.target, change.target + last - first + 1};
    }
    Q_EMIT aboutToChange(change);
}

void SceneMirror::endMove(int first, int last, const QModelIndex& to, int target)
{
    if (!m_change || m_change->kind != SceneChange::Move)
        return endInsertion(to, target, target + last - first);
    SceneChange& change = *m_change;
    const Node block = m_rows.cut(change.orders);
    if (change.target > change.orders.first)
        change.target -= change.orders.count();
    m_rows.shiftDepth(block, m_rows.childDepth(change.to) - m_rows.childDepth(change.from));
    for (const RowTree::Row& row : m_rows.rowsOf(block))
        forget(row.node);
    m_rows.insert(change.target, block, change.to);
    change.orders = {change.target, change.target + change.orders.count()};
    end();
}

void SceneMirror::beginLayoutChange()
{
    Q_EMIT aboutToChange(begin(SceneChange::Reset));
    m_kept.emplace();
    for (RowWalk row = walk(); !row.atEnd(); row.next()) {
        if (m_rows.isOpen(row.node()) || m_rows.hasBranch(row.node()) ||
            m_marks.has(row.node(), RowMarks::ClosedWhileFound))
            m_kept->insert(row.node(), row.index());
    }
}

void SceneMirror::beginReset()
{
    m_kept.reset();
    Q_EMIT aboutToChange(begin(SceneChange::Reset));
}

void SceneMirror::endReset()
{
    if (!m_change)
        return;
    QHash<QModelIndex, Node> known;
    const bool isLayout = m_kept.has_value();
    const QHash<Node, QPersistentModelIndex> kept =
        m_kept.value_or(QHash<Node, QPersistentModelIndex>());
    m_kept.reset();
    for (auto row = kept.begin(); row != kept.end(); ++row) {
        if (row->isValid())
            known.insert(*row, row.key());
    }
    start(isLayout ? &known : nullptr);
    end();
}

} // namespace kyr::panel
