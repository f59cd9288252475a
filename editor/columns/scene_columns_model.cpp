#include "scene_columns_model.h"

#include <editor/document/scene_properties.h>
#include <editor/rows/scene_item_model.h>
#include <kyr_scene_outline/item_roles.h>

#include <algorithm>

namespace editor {

namespace {

// What `createIndex` takes for groups; columns take the number of their group from 1 on.
constexpr quintptr groupLevel = 0;

std::size_t groupOf(const QModelIndex& column)
{
    return std::size_t(column.internalId() - 1);
}

int widthOf(PropertyKind kind)
{
    switch (kind) {
    case PropertyKind::Boolean:
        return 56;
    case PropertyKind::Integer:
    case PropertyKind::Number:
        return 76;
    case PropertyKind::Color:
        return 90;
    case PropertyKind::Vector:
        return 140;
    case PropertyKind::Text:
    case PropertyKind::Choice:
    case PropertyKind::Group:
        break;
    }
    return 110;
}

Qt::Alignment alignmentOf(PropertyKind kind)
{
    switch (kind) {
    case PropertyKind::Boolean:
        return Qt::AlignHCenter;
    case PropertyKind::Integer:
    case PropertyKind::Number:
        return Qt::AlignRight;
    default:
        return Qt::AlignLeft;
    }
}

} // namespace

SceneColumnsModel::SceneColumnsModel(QObject* parent) : QAbstractItemModel(parent)
{
    const QString object = tr("Object");
    addColumn(object, {"type", tr("Type"), kyr::TypeRole, 80});
    addColumn(object, {"path", tr("Path"), SceneItemModel::PathRole, 150});
    addColumn(object, {"count", tr("Children"), kyr::CountRole, 70, false, Qt::AlignRight});
    addColumn(object, {"modified", tr("Modified"), kyr::ModifiedRole, 70, false, Qt::AlignHCenter});
    for (const SceneProperty& property : SceneProperties::all().list()) {
        if (!property.isName())
            addProperty(property);
    }
}

void SceneColumnsModel::addProperty(const SceneProperty& property)
{
    const QString group = property.group().isEmpty() ? tr("Object") : property.group();
    // Above the tree a title stands without its group.
    const QString title = hasTitle(property.title())
                              ? group + QLatin1Char(' ') + property.title().toLower()
                              : property.title();
    const bool isToggle = property.kind() == PropertyKind::Boolean && property.isEditable();
    addColumn(group, {QString::fromStdString(property.path()), title, property.role(),
                      widthOf(property.kind()), isToggle, alignmentOf(property.kind()),
                      property.isEditable() && !isToggle, property.choices()});
}

void SceneColumnsModel::addColumn(const QString& group, Column column)
{
    const auto found = std::find_if(m_groups.begin(), m_groups.end(),
                                    [&group](const Group& g) { return g.title == group; });
    Group& target = found != m_groups.end() ? *found : m_groups.emplace_back(Group{group, {}});
    column.order = columns().size();
    target.columns.push_back(std::move(column));
}

bool SceneColumnsModel::hasTitle(const QString& title) const
{
    const QModelIndexList all = columns();
    return std::any_of(all.begin(), all.end(), [&title](const QModelIndex& column) {
        return column.data().toString() == title;
    });
}

QModelIndex SceneColumnsModel::indexOf(const QString& columnId) const
{
    const QModelIndexList all = columns();
    const auto found = std::find_if(all.begin(), all.end(), [&](const QModelIndex& column) {
        return columnAt(column)->id == columnId;
    });
    return found != all.end() ? *found : QModelIndex();
}

QModelIndexList SceneColumnsModel::columns() const
{
    QModelIndexList all;
    for (int group = 0; group < rowCount(); ++group) {
        const QModelIndex parent = index(group, 0);
        for (int row = 0; row < rowCount(parent); ++row)
            all << index(row, 0, parent);
    }
    return all;
}

const SceneColumnsModel::Column* SceneColumnsModel::columnAt(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == groupLevel)
        return nullptr;
    return &m_groups[groupOf(index)].columns[std::size_t(index.row())];
}

QHash<int, QByteArray> SceneColumnsModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractItemModel::roleNames();
    names.insert(ColumnIdRole, "columnId");
    names.insert(ColumnOrderRole, "columnOrder");
    names.insert(ValueRole, "valueRole");
    names.insert(WidthRole, "width");
    names.insert(ToggleRole, "toggle");
    names.insert(AlignmentRole, "alignment");
    names.insert(EditableRole, "editable");
    names.insert(ChoicesRole, "choices");
    return names;
}

QModelIndex SceneColumnsModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    const quintptr level = parent.isValid() ? quintptr(parent.row()) + 1 : groupLevel;
    return createIndex(row, column, level);
}

QModelIndex SceneColumnsModel::parent(const QModelIndex& index) const
{
    if (!columnAt(index))
        return {};
    return createIndex(int(groupOf(index)), 0, groupLevel);
}

int SceneColumnsModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return int(m_groups.size());
    if (parent.internalId() != groupLevel)
        return 0;
    return int(m_groups[std::size_t(parent.row())].columns.size());
}

int SceneColumnsModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant SceneColumnsModel::data(const QModelIndex& index, int role) const
{
    const Column* column = columnAt(index);
    if (!column) {
        const bool isTitle = index.isValid() && role == Qt::DisplayRole;
        return isTitle ? m_groups[std::size_t(index.row())].title : QVariant();
    }
    switch (role) {
    case Qt::DisplayRole:
        return column->title;
    case ColumnIdRole:
        return column->id;
    case ColumnOrderRole:
        return column->order;
    case ValueRole:
        return column->valueRole;
    case WidthRole:
        return column->width;
    case ToggleRole:
        return column->isToggle;
    case AlignmentRole:
        return int(column->alignment);
    case EditableRole:
        return column->isEditable;
    case ChoicesRole:
        return column->choices;
    default:
        return {};
    }
}

bool SceneColumnsModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const Column* column = columnAt(index);
    if (!column || role != ColumnOrderRole || !value.canConvert<int>())
        return false;
    const int order = value.toInt();
    if (column->order != order) {
        m_groups[groupOf(index)].columns[std::size_t(index.row())].order = order;
        Q_EMIT dataChanged(index, index, {ColumnOrderRole});
    }
    return true;
}

Qt::ItemFlags SceneColumnsModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return columnAt(index) ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                           : Qt::ItemFlags(Qt::ItemIsEnabled);
}

} // namespace editor
