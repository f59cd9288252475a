#include "arranged_tree_model.h"

#include "arranged_tree_sorter.h"

#include <QLocale>
#include <QVarLengthArray>

#include <algorithm>

namespace kyr::panel {

namespace {

// The C locale knows no numeric order.
QLocale sortingLocale()
{
    const QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

} // namespace

ArrangedTreeModel::ArrangedTreeModel(QAbstractItemModel* source, const Settings& settings,
                                     QObject* parent)
    : QAbstractProxyModel(parent), m_settings(settings), m_collator(sortingLocale())
{
    m_collator.setNumericMode(true);
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    if (const QObject* predicate = settings.predicate) {
        const QMetaObject* meta = predicate->metaObject();
        m_accepts = meta->method(meta->indexOfMethod("accepts(QModelIndex)"));
        m_filters = m_accepts.isValid() && predicate->property("active").toBool();
    }
    setSourceModel(source);
    connectSource();
    startOver();
}

ArrangedTreeModel::~ArrangedTreeModel() = default;

bool ArrangedTreeModel::accepts(const QModelIndex& index) const
{
    bool accepted = true;
    if (m_filters && m_settings.predicate)
        m_accepts.invoke(m_settings.predicate, Qt::DirectConnection, Q_RETURN_ARG(bool, accepted),
                         Q_ARG(QModelIndex, index));
    return accepted;
}

QModelIndex ArrangedTreeModel::originOf(const QModelIndex& index)
{
    const auto* arranged = qobject_cast<const ArrangedTreeModel*>(index.model());
    return arranged ? arranged->mapToSource(index) : index;
}

ArrangedTreeModel::Row* ArrangedTreeModel::rowAt(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Row*>(index.internalPointer()) : &m_root;
}

ArrangedTreeModel::Row* ArrangedTreeModel::rowOfSource(const QModelIndex& sourceIndex) const
{
    QVarLengthArray<int, 32> path;
    for (QModelIndex index = sourceIndex; index.isValid(); index = index.parent())
        path.append(index.row());
    Row* row = &m_root;
    for (int level = path.size() - 1; level >= 0; --level) {
        const auto number = std::size_t(path[level]);
        if (number >= row->sourceChildren.size())
            return nullptr;
        row = row->sourceChildren[number];
    }
    return row;
}

QModelIndex ArrangedTreeModel::sourceIndexOf(const Row* row) const
{
    const QAbstractItemModel* source = sourceModel();
    if (!source)
        return {};
    QVarLengthArray<int, 32> path;
    for (; row != &m_root; row = row->sourceParent)
        path.append(row->sourceRow);
    QModelIndex index;
    for (int level = path.size() - 1; level >= 0; --level)
        index = source->index(path[level], 0, index);
    return index;
}

QModelIndex ArrangedTreeModel::indexOf(const Row* row) const
{
    return row == &m_root ? QModelIndex() : createIndex(row->shownRow, 0, const_cast<Row*>(row));
}

QModelIndex ArrangedTreeModel::mapToSource(const QModelIndex& index) const
{
    const Row* row = rowAt(index);
    return index.isValid() && !row->isGroup() ? sourceIndexOf(row) : QModelIndex();
}

QModelIndex ArrangedTreeModel::mapFromSource(const QModelIndex& index) const
{
    if (!isReady() || m_resetting || !index.isValid() || index.model() != sourceModel())
        return {};
    const Row* row = rowOfSource(index);
    return row && row->isShown() ? indexOf(row) : QModelIndex();
}

int ArrangedTreeModel::countShown(const QModelIndex& sourceParent, int first, int last) const
{
    const Row* parent = isReady() && !m_resetting ? rowOfSource(sourceParent) : nullptr;
    if (!parent || last >= int(parent->sourceChildren.size()))
        return 0;
    return int(std::count_if(parent->sourceChildren.begin() + first,
                             parent->sourceChildren.begin() + last + 1,
                             [](const Row* row) { return row->isShown(); }));
}

QModelIndex ArrangedTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, rowAt(parent)->shownChildren[std::size_t(row)]);
}

QModelIndex ArrangedTreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOf(rowAt(child)->shownParent) : QModelIndex();
}

int ArrangedTreeModel::rowCount(const QModelIndex& parent) const
{
    return isReady() && parent.column() <= 0 ? int(rowAt(parent)->shownChildren.size()) : 0;
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
    if (!index.isValid())
        return {};
    const Row* row = rowAt(index);
    if (role == MatchesRole)
        return row->matches;
    if (row->isGroup())
        return groupData(*row, role);
    // What a filter found is to be seen.
    if (role == m_expandedRole && m_filters)
        return true;
    return sourceIndexOf(row).data(role);
}

QVariant ArrangedTreeModel::groupData(const Row& group, int role) const
{
    if (role == Qt::DisplayRole)
        return group.type.isEmpty() ? tr("Other")
                                    : group.type.left(1).toUpper() + group.type.mid(1);
    if (role == m_typeRole)
        return group.type;
    if (role == m_countRole)
        return int(group.shownChildren.size());
    if (role == m_expandedRole || role == m_enabledRole)
        return true;
    return {};
}

Qt::ItemFlags ArrangedTreeModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    const Row* row = rowAt(index);
    return row->isGroup() ? Qt::ItemIsEnabled : sourceIndexOf(row).flags();
}

} // namespace kyr::panel
