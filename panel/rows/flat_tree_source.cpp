// How the flat tree follows its source. The list announces a change when the source does and makes
// it when the source has; in between, row numbers of source and list stay in step.

#include "flat_tree_model.h"

#include <algorithm>

namespace kyr::panel {

namespace {

SourceRows::Start allCollapsed(const QModelIndex&, quint32)
{
    return {};
}

} // namespace

void FlatTreeModel::connectSource()
{
    if (!m_source)
        return;
    using Model = QAbstractItemModel;
    connect(m_source, &Model::rowsAboutToBeInserted, this, &FlatTreeModel::beginInsertion);
    connect(m_source, &Model::rowsInserted, this, &FlatTreeModel::endInsertion);
    connect(m_source, &Model::rowsAboutToBeRemoved, this, &FlatTreeModel::beginRemoval);
    connect(m_source, &Model::rowsRemoved, this, &FlatTreeModel::endRemoval);
    connect(m_source, &Model::rowsAboutToBeMoved, this, &FlatTreeModel::beginMove);
    connect(m_source, &Model::rowsMoved, this,
            [this](const QModelIndex& from, int, int, const QModelIndex& to, int target) {
                endMove(from, to, target);
            });
    connect(m_source, &Model::layoutAboutToBeChanged, this, &FlatTreeModel::beginLayoutChange);
    connect(m_source, &Model::layoutChanged, this, &FlatTreeModel::endLayoutChange);
    connect(m_source, &Model::modelAboutToBeReset, this, &FlatTreeModel::beginReset);
    connect(m_source, &Model::modelReset, this, &FlatTreeModel::endReset);
    connect(m_source, &Model::dataChanged, this, &FlatTreeModel::forwardDataChanged);
    connect(m_source, &QObject::destroyed, this, [this] { setSourceModel(nullptr); });
}

void FlatTreeModel::beginInsertion(const QModelIndex& parent, int first, int last)
{
    dropPreparation();
    m_cachedRow = -1;
    m_pending = {};
    m_pending.source = Change::Insert;
    // After all was collapsed, what comes starts as it wishes and what was there does not, which
    // only rows that are known can tell.
    m_pending.to = m_rows.ignoresWishes(parent) ? readFamilyOf(parent) : m_rows.familyOf(parent);
    m_pending.count = last - first + 1;
    m_pending.sourceFirst = first;
    if (!m_pending.to)
        return;
    m_pending.target = m_rows.rowOfChild(*m_pending.to, first);
    if (m_pending.to->isVisible()) {
        m_pending.list = Change::Insert;
        beginInsertRows({}, m_pending.target, m_pending.target + m_pending.count - 1);
    }
}

void FlatTreeModel::endInsertion(const QModelIndex& parent)
{
    if (m_pending.source != Change::Insert)
        return;
    const Pending done = m_pending;
    const int last = done.sourceFirst + done.count - 1;
    if (done.to) {
        // The announced rows are the inserted ones alone; those that wish so are opened after them.
        const Node block = m_rows.readRows(parent, 0, done.sourceFirst, last,
                                           m_rows.childDepth(*done.to), allCollapsed);
        m_rows.insert(done.to->owner, done.target, block);
    }
    finish();
    if (done.to) {
        const SourceRows::StartOf wishes = m_rows.wishes();
        for (int row = done.sourceFirst; row <= last; ++row) {
            const QModelIndex inserted = m_source->index(row, 0, parent);
            if ((wishes(inserted, 0).flags & RowTree::Expanded) != 0)
                setShownExpanded(inserted, true);
        }
    }
    // What a filter hid may be selected.
    if (done.to && m_arranged)
        readSelection();
    rowChanged(parent, {HasChildrenRole});
}

void FlatTreeModel::beginRemoval(const QModelIndex& parent, int first, int last)
{
    dropPreparation();
    m_cachedRow = -1;
    m_pending = {};
    m_pending.source = Change::Remove;
    m_pending.from = m_rows.familyOf(parent);
    if (!m_pending.from)
        return;
    m_pending.first = m_rows.rowOfChild(*m_pending.from, first);
    m_pending.count = m_rows.rowOfChild(*m_pending.from, last + 1) - m_pending.first;
    if (m_pending.from->isVisible())
        announceRemoval();
}

void FlatTreeModel::announceRemoval()
{
    m_pending.list = Change::Remove;
    beginRemoveRows({}, m_pending.first, m_pending.first + m_pending.count - 1);
}

void FlatTreeModel::endRemoval(const QModelIndex& parent)
{
    if (m_pending.source != Change::Remove)
        return;
    if (m_pending.from)
        m_rows.tree().destroy(m_rows.cut(m_pending.from->owner, m_pending.first, m_pending.count));
    finish();
    rowChanged(parent, {HasChildrenRole});
}

void FlatTreeModel::beginMove(const QModelIndex& from, int first, int last, const QModelIndex& to,
                              int target)
{
    dropPreparation();
    m_cachedRow = -1;
    // Rows that are known stay known where they go, so that they keep their expansion.
    std::optional<Family> source = m_rows.familyOf(from);
    std::optional<Family> destination = source ? readFamilyOf(to) : m_rows.familyOf(to);
    m_pending = {};
    m_pending.source = Change::Move;
    m_pending.from = source;
    m_pending.to = destination;
    if (source) {
        m_pending.first = m_rows.rowOfChild(*source, first);
        m_pending.count = m_rows.rowOfChild(*source, last + 1) - m_pending.first;
    } else {
        m_pending.count = last - first + 1;
    }
    if (destination)
        m_pending.target = m_rows.rowOfChild(*destination, target);
    announceMove();
}

void FlatTreeModel::announceMove()
{
    const bool leaves = m_pending.from && m_pending.from->isVisible();
    const bool arrives = m_pending.to && m_pending.to->isVisible();
    const int end = m_pending.first + m_pending.count;
    if (leaves && arrives) {
        // Elsewhere it changes nothing but depths: the last child becomes its parent's next
        // sibling.
        if (m_pending.target < m_pending.first || m_pending.target > end) {
            m_pending.list = Change::Move;
            beginMoveRows({}, m_pending.first, end - 1, {}, m_pending.target);
        }
    } else if (leaves) {
        announceRemoval();
    } else if (arrives) {
        m_pending.list = Change::Insert;
        beginInsertRows({}, m_pending.target, m_pending.target + m_pending.count - 1);
    }
}

void FlatTreeModel::endMove(const QModelIndex& from, const QModelIndex& to, int target)
{
    if (m_pending.source != Change::Move)
        return;
    const Pending move = m_pending;
    RowTree& tree = m_rows.tree();
    Node block = RowTree::none;
    int row = move.target;
    if (move.from) {
        block = m_rows.cut(move.from->owner, move.first, move.count);
        if (move.to && move.to->owner == move.from->owner && row > move.first)
            row -= move.count;
    } else if (move.to) {
        block = m_rows.readRows(to, 0, target, target + move.count - 1, m_rows.childDepth(*move.to),
                                allCollapsed);
    }
    if (move.to) {
        if (move.from)
            tree.shiftDepth(block, m_rows.childDepth(*move.to) - m_rows.childDepth(*move.from));
        m_rows.insert(move.to->owner, row, block);
    } else {
        tree.destroy(block);
    }
    finish();
    if (!move.from && move.to)
        readSelection();
    if (move.to && move.to->isVisible() && move.count > 0)
        Q_EMIT dataChanged(index(row), index(row + move.count - 1), {DepthRole, SelectedRole});
    rowChanged(from, {HasChildrenRole});
    rowChanged(to, {HasChildrenRole});
}

void FlatTreeModel::beginLayoutChange()
{
    dropPreparation();
    m_cachedRow = -1;
    m_pending = {};
    m_pending.source = Change::Layout;
    m_savedRows.clear();
    m_savedOwnIndexes.clear();
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList own = persistentIndexList();
    for (const QModelIndex& index : own)
        m_savedOwnIndexes.emplace_back(index, QPersistentModelIndex(shownIndex(index.row())));
    saveStates();
}

void FlatTreeModel::saveStates()
{
    const RowTree& tree = m_rows.tree();
    for (KnownRowWalk row(tree, m_rows.root(), *m_source); !row.atEnd(); row.next()) {
        const Node hidden = tree.hidden(row.node());
        const SourceRows::Start start{tree.flags(row.node()), hidden != RowTree::none};
        if (start.flags != 0 || start.keepsHidden || m_source->hasChildren(row.index()))
            m_savedRows.push_back({row.index(), start});
    }
}

void FlatTreeModel::endLayoutChange()
{
    if (m_pending.source != Change::Layout)
        return;
    QHash<QModelIndex, SourceRows::Start> starts;
    starts.reserve(int(m_savedRows.size()));
    for (const SavedRow& saved : m_savedRows)
        starts.insert(saved.index, saved.start);
    m_savedRows.clear();
    const auto savedStart = [&](const QModelIndex& index, quint32) { return starts.value(index); };
    m_rows.rebuild(savedStart, m_rows.rootFlags());
    for (const auto& [own, source] : m_savedOwnIndexes)
        changePersistentIndex(own, index(rowOfShown(source)));
    m_savedOwnIndexes.clear();
    m_pending.list = Change::Layout;
    finish();
}

void FlatTreeModel::beginReset()
{
    m_cachedRow = -1;
    m_pending = {};
    m_pending.source = Change::Reset;
    beginResetModel();
    // Arranged anew, the scene keeps what is open; a scene that is new itself does not.
    m_replacement.reset();
    if (m_arranged) {
        m_replacement =
            std::make_unique<RowsReplacement>(m_rows, m_memory, m_source, m_selectionModel);
        m_replacement->take(QDeadlineTimer(QDeadlineTimer::Forever));
    }
}

void FlatTreeModel::endReset()
{
    if (m_pending.source != Change::Reset)
        return;
    m_delayedMarks.clear();
    m_origin = originOf(m_source);
    readRoles();
    const SourceRows nothing;
    if (!m_replacement)
        m_replacement = std::make_unique<RowsReplacement>(nothing, ExpansionMemory(), m_source,
                                                          m_selectionModel);
    takeReplacement();
    m_pending.list = Change::Reset;
    finish();
}

void FlatTreeModel::finish()
{
    const Change announced = m_pending.list;
    m_pending = {};
    m_cachedRow = -1;
    std::vector<Node> changed;
    for (const DelayedMarks& marks : m_delayedMarks)
        mark(marks.ranges, marks.selected, changed);
    m_delayedMarks.clear();
    switch (announced) {
    case Change::Insert:
        endInsertRows();
        break;
    case Change::Remove:
        endRemoveRows();
        break;
    case Change::Move:
        endMoveRows();
        break;
    case Change::Layout:
        Q_EMIT layoutChanged();
        break;
    case Change::Reset:
        endResetModel();
        break;
    case Change::None:
    case Change::Own:
        break;
    }
    signalMarks(changed);
    if (m_currentDelayed && count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), {CurrentRole});
    m_currentDelayed = false;
}

void FlatTreeModel::forwardDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                       const QVector<int>& roles)
{
    if (m_pending.source != Change::None || !topLeft.isValid() || !bottomRight.isValid())
        return;
    const std::optional<Family> family = m_rows.familyOf(topLeft.parent());
    if (!family || !family->isVisible())
        return;
    // Rows of opened children in between are told too: cheaper than a signal for each run.
    const int first = m_rows.rowOfChild(*family, topLeft.row());
    const int last = rowOfShown(bottomRight.siblingAtColumn(0));
    if (last < first)
        return;
    const bool inCells = std::any_of(m_cellRoles.begin(), m_cellRoles.end(),
                                     [&](int role) { return roles.contains(role); });
    Q_EMIT dataChanged(index(first), index(last),
                       inCells ? QVector<int>(roles) << int(CellsRole) : roles);
}

} // namespace kyr::panel
