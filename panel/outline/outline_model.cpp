#include "outline_core.h"

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

using Node = RowTree::Node;

OutlineModel::OutlineModel(QObject* parent)
    : QAbstractListModel(parent), m_core(std::make_unique<Core>(*this))
{
    connect(this, &OutlineModel::rowsInserted, this, &OutlineModel::countChanged);
    connect(this, &OutlineModel::rowsRemoved, this, &OutlineModel::countChanged);
    connect(this, &OutlineModel::modelReset, this, &OutlineModel::countChanged);
    connect(this, &OutlineModel::layoutChanged, this, &OutlineModel::countChanged);
    connect(this, &OutlineModel::rearranged, this, &OutlineModel::countChanged);
    connect(this, &OutlineModel::countChanged, this, &OutlineModel::selectedCountChanged);
}

OutlineModel::~OutlineModel() = default;

QAbstractItemModel* OutlineModel::sourceModel() const
{
    return m_core->m_mirror.model();
}

QItemSelectionModel* OutlineModel::selectionModel() const
{
    return m_core->m_selection;
}

QObject* OutlineModel::predicate() const
{
    return m_core->m_settings.predicate;
}

QString OutlineModel::arrangement() const
{
    return m_core->m_arrangement;
}

bool OutlineModel::showsHierarchy() const
{
    return m_core->m_settings.arrangement == Arrangement::Hierarchy;
}

int OutlineModel::sortRole() const
{
    return m_core->m_settings.sortRole;
}

bool OutlineModel::isSortDescending() const
{
    return m_core->m_settings.sortOrder == Qt::DescendingOrder;
}

QList<int> OutlineModel::cellRoles() const
{
    return m_core->m_cellRoles;
}

void OutlineModel::setCellRoles(const QList<int>& roles)
{
    if (roles == m_core->m_cellRoles)
        return;
    m_core->m_cellRoles = roles;
    m_core->allChanged({CellsRole});
    Q_EMIT cellRolesChanged();
}

int OutlineModel::count() const
{
    return m_core->count();
}

bool OutlineModel::isWorking() const
{
    return m_core->m_working;
}

bool OutlineModel::isArranged() const
{
    return m_core->m_arranged != nullptr;
}

int OutlineModel::matchCount() const
{
    return m_core->m_matches;
}

int OutlineModel::selectedCount() const
{
    return m_core->m_mirror.rows().selectedCount();
}

int OutlineModel::hiddenSelectedCount() const
{
    return selectedCount() - m_core->rows().selectedCount();
}

bool OutlineModel::isPartial() const
{
    return m_core->m_partial;
}

bool OutlineModel::isFetching() const
{
    return m_core->m_fetching;
}

std::size_t OutlineModel::bytesUsed() const
{
    return m_core->m_mirror.rows().bytesUsed() +
           (m_core->m_arranged ? m_core->m_arranged->bytesUsed() : 0);
}

int OutlineModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const
{
    // Views ask for rows that have just gone, too.
    const Node node = m_core->rowNode(index.row());
    if (node == RowTree::none)
        return {};
    const RowTree& rows = m_core->rows();
    switch (role) {
    case DepthRole:
        return rows.depth(node);
    case HasChildrenRole:
        return m_core->hasChildren(node);
    case ExpandedRole:
        return rows.has(node, RowTree::Expanded);
    case SelectedRole:
        return rows.has(node, RowTree::Selected);
    case CurrentRole:
        return index.row() == currentRow();
    case SourceIndexRole:
        return sourceIndex(index.row());
    case MatchesRole:
        return m_core->matches(node);
    case HiddenSelectedRole:
        return m_core->hiddenSelected(node);
    case HiddenHoveredRole:
        return m_core->hidesHovered(node);
    case CellsRole: {
        const QModelIndex source = sourceIndex(index.row());
        QVariantList cells;
        for (const int cellRole : m_core->m_cellRoles)
            cells.append(source.data(cellRole));
        return cells;
    }
    default:
        return isGroup(index.row()) ? m_core->groupData(node, role)
                                    : sourceIndex(index.row()).data(role);
    }
}

bool OutlineModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const QModelIndex source = sourceIndex(index.row());
    return source.isValid() && sourceModel()->setData(source, value, role);
}

Qt::ItemFlags OutlineModel::flags(const QModelIndex& index) const
{
    if (isGroup(index.row()))
        return Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    const QModelIndex source = sourceIndex(index.row());
    return source.isValid() ? source.flags() | Qt::ItemNeverHasChildren : Qt::NoItemFlags;
}

QHash<int, QByteArray> OutlineModel::roleNames() const
{
    return m_core->m_roleNames;
}

bool OutlineModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && m_core->fetches() && sourceModel()->canFetchMore({});
}

void OutlineModel::fetchMore(const QModelIndex& parent)
{
    if (canFetchMore(parent))
        sourceModel()->fetchMore({});
}

int OutlineModel::sourceRole(const QByteArray& name) const
{
    return m_core->m_roleNames.key(name, -1);
}

QModelIndex OutlineModel::sourceIndex(int row) const
{
    return m_core->indexAt(row);
}

int OutlineModel::rowOf(const QModelIndex& sourceIndex) const
{
    const Node node = m_core->shownNode(m_core->m_mirror.nodeOf(sourceIndex));
    const int row = node == RowTree::none ? -1 : m_core->rows().row(node);
    return row < count() ? row : -1;
}

int OutlineModel::nearestRow(const QModelIndex& sourceIndex) const
{
    const RowTree& scene = m_core->m_mirror.rows();
    QModelIndex index = sourceIndex.siblingAtColumn(0);
    Node node = m_core->m_mirror.nodeOf(index);
    while (node == RowTree::none && index.isValid()) {
        index = index.parent();
        node = m_core->m_mirror.nodeOf(index);
    }
    while (node != RowTree::none && m_core->shownNode(node) == RowTree::none)
        node = scene.place(node).parent;
    return node == RowTree::none ? -1 : m_core->rows().nearestRow(m_core->shownNode(node));
}

int OutlineModel::parentRow(int row) const
{
    const Node node = m_core->rowNode(row);
    return node == RowTree::none ? -1 : m_core->rows().row(m_core->rows().place(node).parent);
}

int OutlineModel::rowDepth(int row) const
{
    const Node node = m_core->rowNode(row);
    return node == RowTree::none ? -1 : m_core->rows().depth(node);
}

bool OutlineModel::rowHasChildren(int row) const
{
    const Node node = m_core->rowNode(row);
    return node != RowTree::none && m_core->hasChildren(node);
}

bool OutlineModel::isRowExpanded(int row) const
{
    return m_core->rows().has(m_core->rowNode(row), RowTree::Expanded);
}

bool OutlineModel::isRowSelected(int row) const
{
    return m_core->rows().has(m_core->rowNode(row), RowTree::Selected);
}

bool OutlineModel::isGroup(int row) const
{
    return m_core->m_arranged && m_core->m_arranged->isGroup(m_core->rowNode(row));
}

void OutlineModel::visit(int first, int last,
                         const std::function<bool(int, const QModelIndex&)>& visitor) const
{
    const Node start = m_core->rowNode(first);
    last = std::min(last, count() - 1);
    if (start == RowTree::none)
        return;
    if (m_core->m_arranged) {
        const RowTree& rows = m_core->rows();
        Node node = start;
        for (int row = first; row <= last; ++row) {
            if (!visitor(row, m_core->m_mirror.indexOf(m_core->sceneNode(node))))
                return;
            node = rows.has(node, RowTree::Expanded) ? rows.next(node) : rows.afterBranch(node);
        }
        return;
    }
    RowWalk walk(m_core->rows(), start, sourceIndex(first));
    for (int row = first; row <= last; ++row, walk.nextShown()) {
        if (!visitor(row, walk.index()))
            return;
    }
}

QItemSelection OutlineModel::sourceSelection(int first, int last) const
{
    Runs runs;
    visit(first, last, [&runs](int, const QModelIndex& index) {
        runs.add(index);
        return true;
    });
    return runs.take();
}

QItemSelection OutlineModel::matchingSelection() const
{
    Runs runs;
    for (const Node shown : m_core->rows().allRows()) {
        if (m_core->matches(shown))
            runs.add(m_core->m_mirror.indexOf(m_core->sceneNode(shown)));
    }
    return runs.take();
}

} // namespace kyr::panel
