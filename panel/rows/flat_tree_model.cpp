#include "flat_tree_model.h"

#include "row_walk.h"

namespace kyr::panel {

FlatTreeModel::FlatTreeModel(QObject* parent) : QAbstractListModel(parent)
{
    connect(this, &FlatTreeModel::rowsInserted, this, &FlatTreeModel::countChanged);
    connect(this, &FlatTreeModel::rowsRemoved, this, &FlatTreeModel::countChanged);
    connect(this, &FlatTreeModel::modelReset, this, &FlatTreeModel::countChanged);
    connect(this, &FlatTreeModel::layoutChanged, this, &FlatTreeModel::countChanged);
    connect(this, &FlatTreeModel::rearranged, this, &FlatTreeModel::countChanged);
}

FlatTreeModel::~FlatTreeModel() = default;

int FlatTreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant FlatTreeModel::data(const QModelIndex& index, int role) const
{
    const int row = index.row();
    // Views ask for rows that have just gone, too.
    if (row < 0 || row >= count())
        return {};
    switch (role) {
    case DepthRole:
        return rowDepth(row);
    case HasChildrenRole:
        return rowHasChildren(row);
    case ExpandedRole:
        return isRowExpanded(row);
    case SelectedRole:
        return isRowSelected(row);
    case CurrentRole:
        return row == currentRow();
    case SourceIndexRole:
        return sourceIndex(row);
    case MatchesRole:
        return !m_arranged || shownIndex(row).data(ArrangedTreeModel::MatchesRole).toBool();
    case CellsRole: {
        const QModelIndex shown = shownIndex(row);
        QVariantList cells;
        for (const int cellRole : m_cellRoles)
            cells.append(shown.data(cellRole));
        return cells;
    }
    default:
        return shownIndex(row).data(role);
    }
}

bool FlatTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const QModelIndex source = sourceIndex(index.row());
    return source.isValid() && origin()->setData(source, value, role);
}

Qt::ItemFlags FlatTreeModel::flags(const QModelIndex& index) const
{
    const QModelIndex source = index.isValid() ? shownIndex(index.row()) : QModelIndex();
    return source.isValid() ? source.flags() | Qt::ItemNeverHasChildren : Qt::NoItemFlags;
}

QHash<int, QByteArray> FlatTreeModel::roleNames() const
{
    return m_roleNames;
}

void FlatTreeModel::readRoles()
{
    m_roleNames = m_source ? m_source->roleNames() : QAbstractListModel::roleNames();
    m_rows.setSource(m_source, m_roleNames.key("expanded", -1));
    const QHash<int, QByteArray> own{
        {DepthRole, "depth"},       {HasChildrenRole, "hasChildren"},
        {ExpandedRole, "expanded"}, {SelectedRole, "selected"},
        {CurrentRole, "current"},   {SourceIndexRole, "sourceIndex"},
        {MatchesRole, "matches"},   {CellsRole, "cells"},
    };
    for (auto role = own.begin(); role != own.end(); ++role) {
        m_roleNames.remove(m_roleNames.key(role.value(), -1));
        m_roleNames.insert(role.key(), role.value());
    }
}

void FlatTreeModel::setCellRoles(const QList<int>& roles)
{
    if (roles == m_cellRoles)
        return;
    m_cellRoles = roles;
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), {CellsRole});
    Q_EMIT cellRolesChanged();
}

int FlatTreeModel::sourceRole(const QByteArray& name) const
{
    return m_roleNames.key(name, -1);
}

bool FlatTreeModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && m_source && m_source->canFetchMore({});
}

void FlatTreeModel::fetchMore(const QModelIndex& parent)
{
    if (canFetchMore(parent))
        m_source->fetchMore({});
}

QModelIndex FlatTreeModel::shownIndex(int row) const
{
    if (!m_source || row < 0 || row >= count())
        return {};
    if (row == m_cachedRow)
        return m_cachedIndex;
    const QModelIndex index = m_rows.indexOf(m_rows.tree().at(m_rows.root(), row));
    // A delegate reads a dozen roles of one row. Half-way through a change indexes go stale.
    if (m_pending.source == Change::None) {
        m_cachedRow = row;
        m_cachedIndex = index;
    }
    return index;
}

int FlatTreeModel::rowOfShown(const QModelIndex& shown) const
{
    const Node node = m_rows.nodeOf(shown);
    if (node == RowTree::none)
        return -1;
    const auto [root, row] = m_rows.tree().position(node);
    return root == m_rows.root() ? row : -1;
}

int FlatTreeModel::rowOf(const QModelIndex& sourceIndex) const
{
    return rowOfShown(toShown(sourceIndex));
}

int FlatTreeModel::nearestRow(const QModelIndex& sourceIndex) const
{
    for (QModelIndex index = sourceIndex; index.isValid(); index = index.parent()) {
        const int row = rowOf(index.siblingAtColumn(0));
        if (row >= 0)
            return row;
    }
    return -1;
}

int FlatTreeModel::parentRow(int row) const
{
    const Node node = m_rows.tree().at(m_rows.root(), row);
    const Node parent = node == RowTree::none ? node : m_rows.tree().place(node).parent;
    return parent == RowTree::none ? -1 : m_rows.tree().row(parent);
}

int FlatTreeModel::rowDepth(int row) const
{
    const Node node = m_rows.tree().at(m_rows.root(), row);
    return node == RowTree::none ? -1 : m_rows.tree().depth(node);
}

bool FlatTreeModel::rowHasChildren(int row) const
{
    const QModelIndex index = shownIndex(row);
    return index.isValid() && m_source->hasChildren(index);
}

bool FlatTreeModel::isRowExpanded(int row) const
{
    return m_rows.tree().has(m_rows.tree().at(m_rows.root(), row), RowTree::Expanded);
}

bool FlatTreeModel::isRowSelected(int row) const
{
    return m_rows.tree().has(m_rows.tree().at(m_rows.root(), row), RowTree::Selected);
}

void FlatTreeModel::visit(int first, int last,
                          const std::function<bool(int, const QModelIndex&)>& visitor) const
{
    const QModelIndex start = shownIndex(first);
    if (!start.isValid())
        return;
    RowWalk walk(m_rows.tree(), m_rows.tree().at(m_rows.root(), first), start);
    for (int row = first; row <= last && !walk.atEnd(); ++row, walk.next()) {
        if (!visitor(row, walk.index()))
            return;
    }
}

QItemSelection FlatTreeModel::sourceSelection(int first, int last) const
{
    QItemSelection selection;
    QModelIndex runStart;
    QModelIndex runEnd;
    const auto endRun = [&] {
        if (runStart.isValid())
            selection.append(QItemSelectionRange(runStart, runEnd));
    };
    visit(first, last, [&](int, const QModelIndex& shown) {
        const QModelIndex index = toOrigin(shown);
        if (!index.isValid())
            return true;
        const bool continuesRun = runEnd.isValid() && index.row() == runEnd.row() + 1 &&
                                  index.parent() == runEnd.parent();
        if (!continuesRun) {
            endRun();
            runStart = index;
        }
        runEnd = index;
        return true;
    });
    endRun();
    return selection;
}

} // namespace kyr::panel
