#include "fake_scene.h"

#include <QMimeData>
#include <QStringList>

#include <algorithm>
#include <functional>

namespace {

using Item = FakeScene::Item;

Item* append(Item* parent, const QString& name)
{
    auto item = std::make_unique<Item>();
    item->name = name;
    item->parent = parent;
    item->row = int(parent->children.size());
    parent->children.push_back(std::move(item));
    return parent->children.back().get();
}

} // namespace

std::unique_ptr<FakeScene> FakeScene::fromText(const QString& text)
{
    auto model = std::make_unique<FakeScene>();
    std::vector<Item*> levels{&model->m_root};
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QString trimmed = line.trimmed();
        const auto level = std::size_t(line.indexOf(trimmed)) / 2;
        levels.resize(level + 1);
        const bool expanded = trimmed.startsWith(QLatin1Char('+'));
        Item* item = append(levels.back(), expanded ? trimmed.mid(1) : trimmed);
        item->expanded = expanded;
        levels.push_back(item);
    }
    return model;
}

std::unique_ptr<FakeScene> FakeScene::wide(int parents, int children)
{
    auto model = std::make_unique<FakeScene>();
    for (int p = 0; p < parents; ++p) {
        Item* parent = append(&model->m_root, QStringLiteral("group %1").arg(p));
        parent->type = QStringLiteral("group");
        for (int c = 0; c < children; ++c)
            append(parent, QStringLiteral("mesh %1.%2").arg(p).arg(c));
    }
    return model;
}

FakeScene::Item* FakeScene::item(const QModelIndex& index) const
{
    return static_cast<Item*>(index.internalPointer());
}

FakeScene::Item* FakeScene::itemOrRoot(const QModelIndex& index) const
{
    return index.isValid() ? item(index) : &m_root;
}

QModelIndex FakeScene::indexOf(const Item* item) const
{
    return item == &m_root ? QModelIndex() : createIndex(item->row, 0, const_cast<Item*>(item));
}

QModelIndex FakeScene::find(const QString& name) const
{
    std::vector<const Item*> waiting{&m_root};
    while (!waiting.empty()) {
        const Item* item = waiting.back();
        waiting.pop_back();
        if (item->name == name && item != &m_root)
            return indexOf(item);
        for (const auto& child : item->children)
            waiting.push_back(child.get());
    }
    return {};
}

void FakeScene::renumber(Item* parent, int from)
{
    for (auto row = std::size_t(from); row < parent->children.size(); ++row) {
        parent->children[row]->row = int(row);
        parent->children[row]->parent = parent;
    }
}

void FakeScene::insert(const QModelIndex& parent, int row, std::vector<std::unique_ptr<Item>> items)
{
    Item* item = itemOrRoot(parent);
    beginInsertRows(parent, row, row + int(items.size()) - 1);
    item->children.insert(item->children.begin() + row, std::make_move_iterator(items.begin()),
                          std::make_move_iterator(items.end()));
    renumber(item, row);
    endInsertRows();
}

void FakeScene::remove(const QModelIndex& parent, int row, int count)
{
    Item* item = itemOrRoot(parent);
    beginRemoveRows(parent, row, row + count - 1);
    item->children.erase(item->children.begin() + row, item->children.begin() + row + count);
    renumber(item, row);
    endRemoveRows();
}

void FakeScene::move(const QModelIndex& from, int row, int count, const QModelIndex& to, int target)
{
    Item* source = itemOrRoot(from);
    Item* destination = itemOrRoot(to);
    if (!beginMoveRows(from, row, row + count - 1, to, target))
        return;
    std::vector<std::unique_ptr<Item>> moved(
        std::make_move_iterator(source->children.begin() + row),
        std::make_move_iterator(source->children.begin() + row + count));
    source->children.erase(source->children.begin() + row, source->children.begin() + row + count);
    if (source == destination && target > row)
        target -= count;
    destination->children.insert(destination->children.begin() + target,
                                 std::make_move_iterator(moved.begin()),
                                 std::make_move_iterator(moved.end()));
    renumber(source, 0);
    renumber(destination, 0);
    endMoveRows();
}

void FakeScene::sortByName()
{
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    const std::function<void(Item*)> sort = [&](Item* parent) {
        std::stable_sort(parent->children.begin(), parent->children.end(),
                         [](const auto& a, const auto& b) { return a->name < b->name; });
        renumber(parent, 0);
        for (const auto& child : parent->children)
            sort(child.get());
    };
    sort(&m_root);
    for (const QModelIndex& index : before)
        changePersistentIndex(index, indexOf(item(index)));
    Q_EMIT layoutChanged();
}

void FakeScene::reset(std::unique_ptr<FakeScene> other)
{
    beginResetModel();
    m_root.children = std::move(other->m_root.children);
    renumber(&m_root, 0);
    endResetModel();
}

QModelIndex FakeScene::index(int row, int column, const QModelIndex& parent) const
{
    const Item* item = itemOrRoot(parent);
    if (column != 0 || row < 0 || row >= int(item->children.size()))
        return {};
    return createIndex(row, 0, item->children[std::size_t(row)].get());
}

QModelIndex FakeScene::parent(const QModelIndex& index) const
{
    return index.isValid() ? indexOf(item(index)->parent) : QModelIndex();
}

int FakeScene::rowCount(const QModelIndex& parent) const
{
    return int(itemOrRoot(parent)->children.size());
}

int FakeScene::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant FakeScene::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Item& row = *item(index);
    switch (role) {
    case Qt::DisplayRole:
        return row.name;
    case TypeRole:
        return row.type;
    case CountRole:
        return int(row.children.size());
    case ExpandedRole:
        return row.expanded;
    case EnabledRole:
        return row.visible;
    case HoverRole:
        return row.hovered;
    case ModifiedRole:
        return false;
    case ButtonsRole:
        return QVariantList{
            QVariantMap{{QStringLiteral("id"), QStringLiteral("visible")},
                        {QStringLiteral("icon"), QStringLiteral("visible")},
                        {QStringLiteral("checked"), row.visible},
                        {QStringLiteral("name"), QStringLiteral("Visible")},
                        {QStringLiteral("toolTip"),
                         row.visible ? QStringLiteral("Hide") : QStringLiteral("Show")}}};
    default:
        return {};
    }
}

bool FakeScene::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid())
        return false;
    if (role == Qt::EditRole && !value.toString().isEmpty()) {
        item(index)->name = value.toString();
        Q_EMIT dataChanged(index, index, {Qt::DisplayRole});
        return true;
    }
    if (role == ExpandedRole) {
        item(index)->expanded = value.toBool();
        Q_EMIT dataChanged(index, index, {ExpandedRole});
        return true;
    }
    if (role == TypeRole && !value.toString().contains(QLatin1Char(' '))) {
        item(index)->type = value.toString();
        Q_EMIT dataChanged(index, index, {TypeRole});
        return true;
    }
    const QVariant visible =
        role == ButtonsRole ? value.toMap().value(QStringLiteral("visible")) : value;
    if ((role != ButtonsRole && role != EnabledRole) || !visible.isValid())
        return false;
    item(index)->visible = visible.toBool();
    Q_EMIT dataChanged(index, index, {ButtonsRole, EnabledRole});
    return true;
}

Qt::ItemFlags FakeScene::flags(const QModelIndex& index) const
{
    return QAbstractItemModel::flags(index) | Qt::ItemIsEditable | Qt::ItemIsDragEnabled |
           Qt::ItemIsDropEnabled;
}

QMimeData* FakeScene::mimeData(const QModelIndexList& indexes) const
{
    auto* data = new QMimeData;
    QStringList names;
    for (const QModelIndex& index : indexes)
        names += index.data().toString();
    data->setText(names.join(QLatin1Char('\n')));
    return data;
}

bool FakeScene::canDropMimeData(const QMimeData* data, Qt::DropAction action, int, int,
                                const QModelIndex& parent) const
{
    for (QModelIndex up = parent; up.isValid(); up = up.parent()) {
        if (data->text().split(QLatin1Char('\n')).contains(up.data().toString()))
            return false;
    }
    return action == Qt::MoveAction;
}

bool FakeScene::dropMimeData(const QMimeData* data, Qt::DropAction, int row, int,
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

QHash<int, QByteArray> FakeScene::roleNames() const
{
    return {
        {Qt::DisplayRole, "display"},     {TypeRole, "type"},         {CountRole, "count"},
        {ObjectRole, "object"},           {ExpandedRole, "expanded"}, {EnabledRole, "enabled"},
        {ButtonsRole, "rowButtonsModel"}, {HoverRole, "hoverRole"},   {ModifiedRole, "modified"}};
}
