#include "outline_rows.h"

#include <algorithm>

namespace kyr::panel {

namespace {

/// Makes one range of each run of siblings.
class Runs
{
public:
    void add(const QModelIndex& index)
    {
        if (!index.isValid())
            return;
        if (!m_last.isValid() || index.row() != m_last.row() + 1 ||
            index.parent() != m_last.parent()) {
            end();
            m_first = index;
        }
        m_last = index;
    }
    QItemSelection take()
    {
        end();
        return m_runs;
    }

private:
    void end()
    {
        if (m_first.isValid())
            m_runs.append(QItemSelectionRange(m_first, m_last));
    }

    QItemSelection m_runs;
    QModelIndex m_first;
    QModelIndex m_last;
};

} // namespace

OutlineRows::OutlineRows(QObject* parent) : QAbstractListModel(parent)
{
    readRoles();
}

OutlineRows::~OutlineRows() = default;

void OutlineRows::readRoles()
{
    m_roleNames = sourceModel() ? sourceModel()->roleNames() : QAbstractListModel::roleNames();
    m_hoverRole = m_roleNames.key("hoverRole", -1);
    m_countRole = m_roleNames.key("count", -1);
    const QHash<int, QByteArray> own{
        {DepthRole, "depth"},
        {HasChildrenRole, "hasChildren"},
        {ExpandedRole, "expanded"},
        {SelectedRole, "selected"},
        {CurrentRole, "current"},
        {SourceIndexRole, "sourceIndex"},
        {MatchesRole, "matches"},
        {CellsRole, "cells"},
        {HiddenSelectedRole, "hiddenSelected"},
        {HiddenHoveredRole, "hiddenHovered"},
    };
    for (auto role = own.begin(); role != own.end(); ++role) {
        m_roleNames.remove(m_roleNames.key(role.value(), -1));
        m_roleNames.insert(role.key(), role.value());
    }
}

void OutlineRows::setCellRoles(const QList<int>& roles)
{
    if (roles == m_cellRoles)
        return;
    m_cellRoles = roles;
    allChanged({CellsRole});
    Q_EMIT cellRolesChanged();
}

int OutlineRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant OutlineRows::data(const QModelIndex& index, int role) const
{
    // Views ask for rows that have just gone, too.
    const Node node = nodeAt(index.row());
    if (node == RowTree::none)
        return {};
    switch (role) {
    case DepthRole:
        return rows().depth(node);
    case HasChildrenRole:
        return isParent(node);
    case ExpandedRole:
        return isOpen(node);
    case SelectedRole:
        return marks().has(node, RowMarks::Selected);
    case CurrentRole:
        return node == currentNode();
    case SourceIndexRole:
        return sourceIndex(index.row());
    case MatchesRole:
        return matches(node);
    case HiddenSelectedRole:
        return rows().isOpen(node) ? 0 : rows().selectedIn(rows().below(node));
    case HiddenHoveredRole:
        return hidesHovered(node);
    case CellsRole: {
        QVariantList cells;
        for (const int cellRole : m_cellRoles)
            cells.append(sourceIndex(index.row()).data(cellRole));
        return cells;
    }
    default:
        return isGroupNode(node) ? groupData(node, role) : sourceIndex(index.row()).data(role);
    }
}

QVariant OutlineRows::groupData(Node group, int role) const
{
    const QString type = m_mirror.type(group);
    const QByteArray name = m_roleNames.value(role);
    if (role == Qt::DisplayRole)
        return type.isEmpty() ? tr("Other") : type.left(1).toUpper() + type.mid(1);
    if (name == "type")
        return type;
    if (name == "count")
        return rows().below(group).count();
    if (name == "enabled")
        return true;
    return {};
}

bool OutlineRows::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const QModelIndex source = sourceIndex(index.row());
    return source.isValid() && sourceModel()->setData(source, value, role);
}

Qt::ItemFlags OutlineRows::flags(const QModelIndex& index) const
{
    const QModelIndex source = sourceIndex(index.row());
    if (!source.isValid() && !isGroup(index.row()))
        return Qt::NoItemFlags;
    return (source.isValid() ? source.flags() : Qt::ItemIsEnabled) | Qt::ItemNeverHasChildren;
}

bool OutlineRows::isParent(Node node) const
{
    if (!followsScene())
        return rows().hasBranch(node);
    // Invalid while the scene is being destroyed.
    const QModelIndex index = m_mirror.indexOf(node);
    return index.isValid() && index.model()->hasChildren(index);
}

/// In a flat list nothing is below anything.
bool OutlineRows::isOpen(Node node) const
{
    return node != RowTree::none && rows().isOpen(node) &&
           (!m_rules || m_rules->nests() || isGroupNode(node));
}

bool OutlineRows::hidesHovered(Node node) const
{
    if (m_hovered.empty() || rows().isOpen(node))
        return false;
    const RowTree::Range below = rows().below(node);
    return std::any_of(m_hovered.begin(), m_hovered.end(), [&](Node hovered) {
        const int order = shown(hovered) == RowTree::none ? -1 : rows().order(hovered);
        return order >= below.first && order < below.end;
    });
}

OutlineRows::Node OutlineRows::nodeAt(int row) const
{
    return row < count() ? rows().at(row) : RowTree::none;
}

int OutlineRows::currentRow() const
{
    return limited(rows().row(shown(currentNode())));
}

OutlineRows::Node OutlineRows::currentNode() const
{
    if (m_focusedGroup != RowTree::none || !m_selection)
        return m_focusedGroup;
    return m_mirror.nodeOf(m_selection->currentIndex());
}

QModelIndex OutlineRows::sourceIndex(int row) const
{
    // A delegate reads a dozen roles of one row.
    if (row < 0 || row == m_indexedRow)
        return row < 0 ? QModelIndex() : m_rowIndex;
    const QModelIndex index = m_mirror.indexOf(nodeAt(row));
    // Half-way through a change indexes go stale.
    if (!m_mirror.isChanging()) {
        m_indexedRow = row;
        m_rowIndex = index;
    }
    return index;
}

int OutlineRows::rowOf(const QModelIndex& sourceIndex) const
{
    return limited(rows().row(shown(m_mirror.nodeOf(sourceIndex))));
}

int OutlineRows::sceneOrder(const QModelIndex& sourceIndex) const
{
    const Node node = m_mirror.nodeOf(sourceIndex);
    return node == RowTree::none ? -1 : m_mirror.rows().order(node);
}

int OutlineRows::nearestRow(const QModelIndex& sourceIndex) const
{
    Node node = m_mirror.nodeOf(sourceIndex);
    for (QModelIndex index = sourceIndex.parent(); node == RowTree::none && index.isValid();
         index = index.parent())
        node = m_mirror.nodeOf(index);
    while (node != RowTree::none && shown(node) == RowTree::none)
        node = m_mirror.rows().parent(node);
    return node == RowTree::none ? -1 : rows().nearestRow(node);
}

int OutlineRows::parentRow(int row) const
{
    const Node node = nodeAt(row);
    return node == RowTree::none ? -1 : rows().row(rows().parent(node));
}

bool OutlineRows::rowHasChildren(int row) const
{
    const Node node = nodeAt(row);
    return node != RowTree::none && isParent(node);
}

bool OutlineRows::isRowSelected(int row) const
{
    return marks().has(nodeAt(row), RowMarks::Selected);
}

void OutlineRows::visit(int first, int last,
                        const std::function<bool(int, const QModelIndex&)>& visitor) const
{
    Node node = nodeAt(first);
    last = std::min(last, count() - 1);
    if (node == RowTree::none)
        return;
    if (m_arranged) {
        for (int row = first; row <= last && visitor(row, m_mirror.indexOf(node)); ++row)
            node = rows().isOpen(node) ? rows().next(node) : rows().afterBranch(node);
        return;
    }
    RowWalk walk(rows(), node, sourceIndex(first));
    for (int row = first; row <= last && visitor(row, walk.index()); ++row)
        walk.nextShown();
}

QItemSelection OutlineRows::sourceSelection(int first, int last) const
{
    Runs runs;
    visit(first, last, [&runs](int, const QModelIndex& index) {
        runs.add(index);
        return true;
    });
    return runs.take();
}

QItemSelection OutlineRows::matchingSelection() const
{
    Runs runs;
    for (const RowTree::Row& row : rows().allRows()) {
        if (matches(row.node))
            runs.add(m_mirror.indexOf(row.node));
    }
    return runs.take();
}

std::size_t OutlineRows::bytesUsed() const
{
    return marks().bytesUsed() + m_mirror.rows().bytesUsed() +
           (m_arranged ? m_arranged->bytesUsed() : 0);
}

void OutlineRows::rowChanged(Node node, const QVector<int>& roles)
{
    const int row = shown(node) == RowTree::none ? -1 : limited(rows().nearestRow(node));
    if (row >= 0)
        Q_EMIT dataChanged(index(row), index(row), roles);
}

void OutlineRows::allChanged(const QVector<int>& roles)
{
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), roles);
}

void OutlineRows::announceInsertion(int first, int count)
{
    if (count <= 0 || isResetting())
        return;
    m_announced = Announced::Insert;
    m_indexedRow = -1;
    beginInsertRows({}, first, first + count - 1);
}

void OutlineRows::announceRemoval(int first, int count)
{
    if (count <= 0 || isResetting())
        return;
    m_announced = Announced::Remove;
    m_indexedRow = -1;
    beginRemoveRows({}, first, first + count - 1);
}

/// To its own place nothing moves, though depths may change: the last child becomes its parent's
/// next sibling.
void OutlineRows::announceMove(int first, int count, int target)
{
    if (count <= 0 || isResetting() || (target >= first && target <= first + count))
        return;
    m_announced = Announced::Move;
    m_indexedRow = -1;
    beginMoveRows({}, first, first + count - 1, {}, target);
}

void OutlineRows::endAnnounced()
{
    if (isResetting())
        return;
    m_indexedRow = -1;
    const Announced announced = std::exchange(m_announced, Announced::Nothing);
    if (announced == Announced::Insert)
        endInsertRows();
    else if (announced == Announced::Remove)
        endRemoveRows();
    else if (announced == Announced::Move)
        endMoveRows();
    if (announced == Announced::Insert || announced == Announced::Remove)
        Q_EMIT countChanged();
}

void OutlineRows::beginReset()
{
    m_announced = Announced::Reset;
    beginResetModel();
}

void OutlineRows::endReset()
{
    m_indexedRow = -1;
    m_announced = Announced::Nothing;
    endResetModel();
    Q_EMIT countChanged();
}

} // namespace kyr::panel
