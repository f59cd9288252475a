#include "arranged_tree_model.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QVarLengthArray>

#include <algorithm>

namespace kyr::panel {

namespace {

constexpr int sliceMilliseconds = 4;
constexpr std::size_t rowsBetweenClockReads = 64;

// The C locale knows no numeric order.
QLocale sortingLocale()
{
    const QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

} // namespace

ArrangedTreeModel::ArrangedTreeModel(QObject* parent)
    : QAbstractProxyModel(parent), m_collator(sortingLocale())
{
    m_slices.setInterval(0);
    connect(&m_slices, &QTimer::timeout, this, &ArrangedTreeModel::matchSlice);
    m_collator.setNumericMode(true);
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
}

ArrangedTreeModel::~ArrangedTreeModel() = default;

void ArrangedTreeModel::setSourceModel(QAbstractItemModel* source)
{
    if (source == sourceModel())
        return;
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
    m_connections.clear();
    beginSourceChange();
    QAbstractProxyModel::setSourceModel(source);
    connectSource();
    endSourceChange();
}

void ArrangedTreeModel::connectSource()
{
    const QAbstractItemModel* source = sourceModel();
    if (!source)
        return;
    using Model = QAbstractItemModel;
    const auto begin = [this] { beginSourceChange(); };
    const auto end = [this] { endSourceChange(); };
    m_connections = {
        connect(source, &Model::rowsAboutToBeInserted, this, begin),
        connect(source, &Model::rowsInserted, this, end),
        connect(source, &Model::rowsAboutToBeRemoved, this, begin),
        connect(source, &Model::rowsRemoved, this, end),
        connect(source, &Model::rowsAboutToBeMoved, this, begin),
        connect(source, &Model::rowsMoved, this, end),
        connect(source, &Model::layoutAboutToBeChanged, this, begin),
        connect(source, &Model::layoutChanged, this, end),
        connect(source, &Model::modelAboutToBeReset, this, begin),
        connect(source, &Model::modelReset, this, end),
        connect(source, &Model::dataChanged, this, &ArrangedTreeModel::forwardDataChanged),
    };
}

void ArrangedTreeModel::beginSourceChange()
{
    if (m_changingSource)
        return;
    m_changingSource = true;
    beginResetModel();
}

void ArrangedTreeModel::endSourceChange()
{
    if (!m_changingSource)
        return;
    const bool worked = isWorking();
    m_slices.stop();
    readSource();
    match(0, m_items.size());
    fillShown();
    m_changingSource = false;
    endResetModel();
    if (worked)
        Q_EMIT workingChanged();
    Q_EMIT arranged();
}

void ArrangedTreeModel::readSource()
{
    m_items.clear();
    m_groups.clear();
    m_root = Item();
    const QAbstractItemModel* source = sourceModel();
    if (!source)
        return;
    const QHash<int, QByteArray> names = source->roleNames();
    m_typeRole = names.key("type", -1);
    m_countRole = names.key("count", -1);
    m_expandedRole = names.key("expanded", -1);
    m_enabledRole = names.key("enabled", -1);

    struct Level
    {
        Item* item;
        QModelIndex index;
        int rows;
    };
    std::vector<Level> levels{{nullptr, QModelIndex(), source->rowCount()}};
    while (!levels.empty()) {
        Level& level = levels.back();
        std::vector<Item*>& siblings =
            level.item ? level.item->sourceChildren : m_root.sourceChildren;
        const int row = static_cast<int>(siblings.size());
        if (row >= level.rows) {
            levels.pop_back();
            continue;
        }
        Item& item = m_items.emplace_back();
        item.sourceParent = level.item;
        item.sourceRow = row;
        siblings.push_back(&item);
        const QModelIndex index = source->index(row, 0, level.index);
        if (const int children = source->rowCount(index); children > 0)
            levels.push_back({&item, index, children});
    }
}

void ArrangedTreeModel::setPredicate(QObject* predicate)
{
    if (m_predicate == predicate)
        return;
    if (m_predicate)
        m_predicate->disconnect(this);
    m_predicate = predicate;
    m_accepts = QMetaMethod();
    if (predicate) {
        const QMetaObject* meta = predicate->metaObject();
        const QMetaMethod rearranging =
            staticMetaObject.method(staticMetaObject.indexOfMethod("rearrange()"));
        m_accepts = meta->method(meta->indexOfMethod("accepts(QModelIndex)"));
        const QMetaMethod changed = meta->method(meta->indexOfSignal("changed()"));
        connect(predicate, changed, this, rearranging);
    }
    rearrange();
}

void ArrangedTreeModel::setArrangement(Arrangement arrangement)
{
    if (m_arrangement == arrangement)
        return;
    m_arrangement = arrangement;
    rearrange();
}

void ArrangedTreeModel::setSorting(const Sorting& sorting)
{
    if (m_sorting == sorting)
        return;
    m_sorting = sorting;
    rearrange();
}

bool ArrangedTreeModel::isFiltering() const
{
    return m_predicate && m_accepts.isValid() && m_predicate->property("active").toBool();
}

bool ArrangedTreeModel::accepts(const QModelIndex& row) const
{
    bool accepted = true;
    m_accepts.invoke(m_predicate, Qt::DirectConnection, Q_RETURN_ARG(bool, accepted),
                     Q_ARG(QModelIndex, row));
    return accepted;
}

void ArrangedTreeModel::rearrange()
{
    const bool worked = isWorking();
    m_next = 0;
    matchSlice();
    if (!isWorking())
        return;
    m_slices.start();
    if (!worked)
        Q_EMIT workingChanged();
}

void ArrangedTreeModel::finish()
{
    if (!isWorking())
        return;
    match(m_next, m_items.size());
    arrange();
}

void ArrangedTreeModel::matchSlice()
{
    QElapsedTimer clock;
    clock.start();
    while (isWorking() && clock.elapsed() < sliceMilliseconds)
        match(m_next, std::min(m_next + rowsBetweenClockReads, m_items.size()));
    if (!isWorking())
        arrange();
}

void ArrangedTreeModel::match(std::size_t first, std::size_t last)
{
    const bool filters = isFiltering();
    const Item* parent = nullptr;
    QModelIndex parentIndex;
    for (std::size_t i = first; i < last; ++i) {
        Item& item = m_items[i];
        if (!filters) {
            item.nextMatches = true;
            continue;
        }
        if (item.sourceParent != parent) {
            parent = item.sourceParent;
            parentIndex = parent ? sourceIndexOf(parent) : QModelIndex();
        }
        item.nextMatches = accepts(sourceModel()->index(item.sourceRow, 0, parentIndex));
    }
    m_next = last;
}

void ArrangedTreeModel::arrange()
{
    const bool sliced = m_slices.isActive();
    m_slices.stop();
    beginResetModel();
    fillShown();
    endResetModel();
    if (sliced)
        Q_EMIT workingChanged();
    Q_EMIT arranged();
}

void ArrangedTreeModel::forwardDataChanged(const QModelIndex& topLeft,
                                           const QModelIndex& bottomRight,
                                           const QVector<int>& roles)
{
    if (m_changingSource || !topLeft.isValid() || !bottomRight.isValid())
        return;
    const bool filters = isFiltering();
    bool differs = m_sorting.role >= 0 && (roles.isEmpty() || roles.contains(m_sorting.role));
    differs = differs || (m_arrangement == Arrangement::ByType && roles.contains(m_typeRole));
    const Item* first = nullptr;
    const Item* last = nullptr;
    const auto announce = [&] {
        if (first)
            Q_EMIT dataChanged(indexOf(first), indexOf(last), roles);
    };
    for (int row = topLeft.row(); row <= bottomRight.row(); ++row) {
        const QModelIndex index = topLeft.sibling(row, 0);
        const Item* item = itemOfSource(index);
        differs = differs || (filters && item && accepts(index) != item->matches);
        if (!item || item->shownRow < 0)
            continue;
        if (!last || item->shownParent != last->shownParent ||
            item->shownRow != last->shownRow + 1) {
            announce();
            first = item;
        }
        last = item;
    }
    announce();
    if (differs)
        rearrange();
}

ArrangedTreeModel::Item* ArrangedTreeModel::itemAt(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Item*>(index.internalPointer()) : nullptr;
}

ArrangedTreeModel::Item* ArrangedTreeModel::itemOfSource(const QModelIndex& sourceIndex) const
{
    QVarLengthArray<int, 32> path;
    for (QModelIndex index = sourceIndex; index.isValid(); index = index.parent())
        path.append(index.row());
    const std::vector<Item*>* rows = &m_root.sourceChildren;
    Item* item = nullptr;
    for (int level = path.size() - 1; level >= 0; --level) {
        const auto row = static_cast<std::size_t>(path[level]);
        if (row >= rows->size())
            return nullptr;
        item = (*rows)[row];
        rows = &item->sourceChildren;
    }
    return item;
}

QModelIndex ArrangedTreeModel::sourceIndexOf(const Item* item) const
{
    QVarLengthArray<int, 32> path;
    for (; item; item = item->sourceParent)
        path.append(item->sourceRow);
    QModelIndex index;
    for (int level = path.size() - 1; level >= 0; --level)
        index = sourceModel()->index(path[level], 0, index);
    return index;
}

QModelIndex ArrangedTreeModel::indexOf(const Item* item) const
{
    return item ? createIndex(item->shownRow, 0, const_cast<Item*>(item)) : QModelIndex();
}

QModelIndex ArrangedTreeModel::mapToSource(const QModelIndex& index) const
{
    const Item* item = itemAt(index);
    return item && !isGroup(item) ? sourceIndexOf(item) : QModelIndex();
}

QModelIndex ArrangedTreeModel::mapFromSource(const QModelIndex& index) const
{
    if (m_changingSource || !index.isValid() || index.model() != sourceModel())
        return {};
    const Item* item = itemOfSource(index);
    return item && item->shownRow >= 0 ? indexOf(item) : QModelIndex();
}

QModelIndex ArrangedTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    const Item* item = itemAt(parent);
    const std::vector<Item*>& rows = item ? item->shownChildren : m_root.shownChildren;
    return createIndex(row, column, rows[static_cast<std::size_t>(row)]);
}

QModelIndex ArrangedTreeModel::parent(const QModelIndex& child) const
{
    const Item* item = itemAt(child);
    return item ? indexOf(item->shownParent) : QModelIndex();
}

int ArrangedTreeModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0)
        return 0;
    const Item* item = itemAt(parent);
    return static_cast<int>((item ? item->shownChildren : m_root.shownChildren).size());
}

int ArrangedTreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool ArrangedTreeModel::hasChildren(const QModelIndex& parent) const
{
    return rowCount(parent) > 0;
}

bool ArrangedTreeModel::canFetchMore(const QModelIndex&) const
{
    return false;
}

QHash<int, QByteArray> ArrangedTreeModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractProxyModel::roleNames();
    names.insert(MatchesRole, "matches");
    return names;
}

QVariant ArrangedTreeModel::data(const QModelIndex& index, int role) const
{
    const Item* item = itemAt(index);
    if (!item)
        return {};
    if (role == MatchesRole)
        return item->matches;
    if (isGroup(item))
        return groupData(*item, role);
    // What a filter found is to be seen.
    if (role == m_expandedRole && isFiltering())
        return true;
    return sourceModel()->data(sourceIndexOf(item), role);
}

QVariant ArrangedTreeModel::groupData(const Item& group, int role) const
{
    if (role == Qt::DisplayRole)
        return group.group.isEmpty() ? tr("Other")
                                     : group.group.left(1).toUpper() + group.group.mid(1);
    if (role == m_typeRole)
        return group.group;
    if (role == m_countRole)
        return static_cast<int>(group.shownChildren.size());
    if (role == m_expandedRole || role == m_enabledRole)
        return true;
    return {};
}

Qt::ItemFlags ArrangedTreeModel::flags(const QModelIndex& index) const
{
    const Item* item = itemAt(index);
    if (!item)
        return {};
    return isGroup(item) ? Qt::ItemIsEnabled : sourceModel()->flags(sourceIndexOf(item));
}

} // namespace kyr::panel
