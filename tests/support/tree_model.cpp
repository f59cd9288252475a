#include "tree_model.h"

#include <QMimeData>
#include <QStringList>

#include <algorithm>

namespace test {
namespace {

std::unique_ptr<TreeModel::Item> makeItem(const QString& name)
{
    return std::make_unique<TreeModel::Item>(std::make_shared<NamedObject>(name.toStdString()));
}

void renumber(TreeModel::Item& parent)
{
    int row = 0;
    for (const auto& child : parent.children) {
        child->row = row++;
        child->parent = &parent;
    }
}

TreeModel::Item* append(TreeModel::Items& items, const QString& name)
{
    items.push_back(makeItem(name));
    return items.back().get();
}

TreeModel::Items taken(TreeModel::Item& parent, int row, int count)
{
    const auto first = parent.children.begin() + row;
    TreeModel::Items items(std::make_move_iterator(first), std::make_move_iterator(first + count));
    parent.children.erase(first, first + count);
    renumber(parent);
    return items;
}

void give(TreeModel::Item& parent, int row, TreeModel::Items items)
{
    parent.children.insert(parent.children.begin() + row, std::make_move_iterator(items.begin()),
                           std::make_move_iterator(items.end()));
    renumber(parent);
}

} // namespace

const kyr::ReflectedClass& NamedObject::reflectedClass() const
{
    static const kyr::ReflectedClass none{"NamedObject", {}};
    return none;
}

TreeModel::Item::Item(std::shared_ptr<kyr::IReflected> itsObject)
    : name(QString::fromStdString(itsObject->reflectedName()))
    , object(std::move(itsObject))
    , objectValue(QVariant::fromValue(kyr::ReflectedObject(object)))
{}

TreeModel::TreeModel(const QString& text, int columns) : TreeModel(parsed(text), columns) {}

TreeModel::TreeModel(Items items, int columns) : m_columns(columns)
{
    give(m_root, 0, std::move(items));
}

TreeModel::Items TreeModel::parsed(const QString& text)
{
    Item root;
    std::vector<Item*> levels{&root};
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QString trimmed = line.trimmed();
        levels.resize(std::size_t(line.indexOf(trimmed)) / 2 + 1);
        const bool expanded = trimmed.startsWith(QLatin1Char('+'));
        levels.push_back(append(levels.back()->children, expanded ? trimmed.mid(1) : trimmed));
        levels.back()->expanded = expanded;
        renumber(*levels[levels.size() - 2]);
    }
    return std::move(root.children);
}

TreeModel::Items TreeModel::wide(int parents, int children)
{
    Items items;
    for (int p = 0; p < parents; ++p) {
        Item* parent = append(items, QStringLiteral("group %1").arg(p));
        parent->type = QStringLiteral("group");
        for (int c = 0; c < children; ++c)
            append(parent->children, QStringLiteral("mesh %1.%2").arg(p).arg(c));
        renumber(*parent);
    }
    return items;
}

TreeModel::Items TreeModel::named(const QStringList& names)
{
    Items items;
    for (const QString& name : names)
        append(items, name);
    return items;
}

TreeModel::Item* TreeModel::item(const QModelIndex& index) const
{
    return static_cast<Item*>(index.internalPointer());
}

TreeModel::Item* TreeModel::itemOrRoot(const QModelIndex& index) const
{
    return index.isValid() ? item(index) : &m_root;
}

QModelIndex TreeModel::indexOf(const Item* item) const
{
    return item == &m_root ? QModelIndex() : createIndex(item->row, 0, const_cast<Item*>(item));
}

template <typename Wanted>
QModelIndex TreeModel::findIf(Wanted wanted) const
{
    std::vector<const Item*> waiting{&m_root};
    while (!waiting.empty()) {
        const Item* item = waiting.back();
        waiting.pop_back();
        if (item != &m_root && wanted(*item))
            return indexOf(item);
        for (const auto& child : item->children)
            waiting.push_back(child.get());
    }
    return {};
}

QModelIndex TreeModel::indexOf(const kyr::IReflected* object) const
{
    return findIf([object](const Item& item) { return item.object.get() == object; });
}

QModelIndex TreeModel::find(const QString& name) const
{
    return findIf([&name](const Item& item) { return item.name == name; });
}

kyr::ReflectedObject TreeModel::object(const QString& name) const
{
    const QModelIndex index = find(name);
    return index.isValid() ? kyr::ReflectedObject(item(index)->object) : kyr::ReflectedObject();
}

void TreeModel::insert(const QModelIndex& parent, int row, Items items)
{
    beginInsertRows(parent, row, row + int(items.size()) - 1);
    give(*itemOrRoot(parent), row, std::move(items));
    endInsertRows();
}

void TreeModel::insertObjects(const QModelIndex& parent, int row,
                              const std::vector<std::shared_ptr<kyr::IReflected>>& objects)
{
    Items items;
    for (const auto& object : objects)
        items.push_back(std::make_unique<Item>(object));
    insert(parent, row, std::move(items));
}

void TreeModel::remove(const QModelIndex& parent, int row, int count)
{
    beginRemoveRows(parent, row, row + count - 1);
    taken(*itemOrRoot(parent), row, count);
    endRemoveRows();
}

bool TreeModel::move(const QModelIndex& from, int row, int count, const QModelIndex& to, int target)
{
    Item* source = itemOrRoot(from);
    Item* destination = itemOrRoot(to);
    if (!beginMoveRows(from, row, row + count - 1, to, target))
        return false;
    if (source == destination && target > row)
        target -= count;
    give(*destination, target, taken(*source, row, count));
    endMoveRows();
    return true;
}

void TreeModel::reverse(const QModelIndex& parent, LayoutChangeHint hint)
{
    Q_EMIT layoutAboutToBeChanged({QPersistentModelIndex(parent)}, hint);
    Item* owner = itemOrRoot(parent);
    std::reverse(owner->children.begin(), owner->children.end());
    renumber(*owner);
    for (const QModelIndex& index : persistentIndexList())
        changePersistentIndex(
            index, createIndex(item(index)->row, index.column(), index.internalPointer()));
    Q_EMIT layoutChanged({QPersistentModelIndex(parent)}, hint);
}

void TreeModel::resetTo(const QString& text)
{
    beginResetModel();
    m_root.children = parsed(text);
    renumber(m_root);
    endResetModel();
}

void TreeModel::emitUnannouncedInsertion(const QModelIndex& parent, int first, int last)
{
    QMetaObject::invokeMethod(this, "rowsInserted", Q_ARG(QModelIndex, parent), Q_ARG(int, first),
                              Q_ARG(int, last));
}

bool TreeModel::insertColumns(int column, int count, const QModelIndex& parent)
{
    beginInsertColumns(parent, column, column + count - 1);
    m_columns += count;
    endInsertColumns();
    return true;
}

bool TreeModel::removeColumns(int column, int count, const QModelIndex& parent)
{
    beginRemoveColumns(parent, column, column + count - 1);
    m_columns -= count;
    endRemoveColumns();
    return true;
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const
{
    return column >= 0 && column < m_columns && row >= 0 && row < rowCount(parent)
               ? createIndex(row, column, itemOrRoot(parent)->children[std::size_t(row)].get())
               : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOf(item(child)->parent) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : int(itemOrRoot(parent)->children.size());
}

int TreeModel::columnCount(const QModelIndex&) const
{
    return m_columns;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const
{
    using Read = QVariant (*)(const Item&);
    static const QHash<int, Read> values{
        {Qt::DisplayRole, [](const Item& row) { return QVariant(row.name); }},
        {TypeRole, [](const Item& row) { return QVariant(row.type); }},
        {CountRole, [](const Item& row) { return QVariant(int(row.children.size())); }},
        {ObjectRole, [](const Item& row) { return row.objectValue; }},
        {ExpandedRole, [](const Item& row) { return QVariant(row.expanded); }},
        {EnabledRole, [](const Item& row) { return QVariant(row.visible); }},
        {HoverRole, [](const Item& row) { return QVariant(row.hovered); }},
        {ModifiedRole, [](const Item&) { return QVariant(false); }},
        {ButtonsRole, [](const Item& row) {
             return QVariant(QVariantList{QVariantMap{{"id", "visible"},
                                                      {"icon", "visible"},
                                                      {"checked", row.visible},
                                                      {"name", "Visible"},
                                                      {"toolTip", row.visible ? "Hide" : "Show"}}});
         }}};
    const Read read = index.isValid() ? values.value(role) : nullptr;
    return read ? read(*item(index)) : QVariant();
}

bool TreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid())
        return false;
    Item& row = *item(index);
    const QVariant visible =
        role == ButtonsRole ? value.toMap().value(QStringLiteral("visible")) : value;
    if (role == Qt::EditRole && !value.toString().isEmpty())
        row.name = value.toString();
    else if (role == TypeRole && !value.toString().contains(QLatin1Char(' ')))
        row.type = value.toString();
    else if (role == ExpandedRole)
        row.expanded = value.toBool();
    else if ((role == ButtonsRole || role == EnabledRole) && visible.isValid())
        row.visible = visible.toBool();
    else
        return false;
    static const QHash<int, QVector<int>> told{{Qt::EditRole, {Qt::DisplayRole}},
                                               {ButtonsRole, {ButtonsRole, EnabledRole}},
                                               {EnabledRole, {ButtonsRole, EnabledRole}}};
    Q_EMIT dataChanged(index, index, told.value(role, {role}));
    return true;
}

Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? item(index)->flags : Qt::ItemIsDropEnabled;
}

QMimeData* TreeModel::mimeData(const QModelIndexList& indexes) const
{
    auto* data = new QMimeData;
    QStringList names;
    for (const QModelIndex& index : indexes)
        names += index.data().toString();
    data->setText(names.join(QLatin1Char('\n')));
    return data;
}

bool TreeModel::canDropMimeData(const QMimeData* data, Qt::DropAction action, int, int,
                                const QModelIndex& parent) const
{
    for (QModelIndex up = parent; up.isValid(); up = up.parent()) {
        if (data->text().split(QLatin1Char('\n')).contains(up.data().toString()))
            return false;
    }
    return action == Qt::MoveAction;
}

bool TreeModel::dropMimeData(const QMimeData* data, Qt::DropAction, int row, int,
                             const QModelIndex& parent)
{
    const QPersistentModelIndex to = parent;
    int target = row < 0 ? rowCount(parent) : row;
    for (const QString& name : data->text().split(QLatin1Char('\n'))) {
        const QModelIndex dragged = find(name);
        const bool wasBefore = dragged.parent() == to && dragged.row() < target;
        move(dragged.parent(), dragged.row(), 1, to, target);
        target += wasBefore ? 0 : 1;
    }
    return true;
}

QHash<int, QByteArray> TreeModel::roleNames() const
{
    return {
        {Qt::DisplayRole, "display"},     {TypeRole, "type"},         {CountRole, "count"},
        {ObjectRole, "object"},           {ExpandedRole, "expanded"}, {EnabledRole, "enabled"},
        {ButtonsRole, "rowButtonsModel"}, {HoverRole, "hoverRole"},   {ModifiedRole, "modified"}};
}

void TreeAssetModel::setObjectHovered(const kyr::ReflectedObject& object, bool hovered)
{
    m_hoverLog += (m_hoverLog.empty() ? "" : " ") + std::string(hovered ? "+" : "-") +
                  object.reference().name();
}

} // namespace test
