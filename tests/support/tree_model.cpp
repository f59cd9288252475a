#include "tree_model.h"

#include <algorithm>
#include <sstream>

namespace test {
namespace {

constexpr int objectRole = 358;

} // namespace

struct TreeModel::Node
{
    std::string name;
    std::shared_ptr<kyr::IReflected> object;
    Node* parent = nullptr;
    int row = 0;
    std::vector<std::unique_ptr<Node>> children;
    QVariant objectValue;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
};

const kyr::ReflectedClass& NamedObject::reflectedClass() const
{
    static const kyr::ReflectedClass none{"NamedObject", {}};
    return none;
}

TreeModel::TreeModel(const std::string& text, int columns)
    : m_root(std::make_unique<Node>()), m_columns(columns)
{
    parse(text);
}

TreeModel::~TreeModel() = default;

void TreeModel::parse(const std::string& text)
{
    m_root = std::make_unique<Node>();
    m_nodes.clear();
    std::vector<Node*> ancestors{m_root.get()};
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t depth = line.find_first_not_of(' ') / 2;
        ancestors.resize(depth + 1);
        Node* parent = ancestors.back();
        auto node = makeNode(std::make_shared<NamedObject>(line.substr(depth * 2)), parent);
        node->row = static_cast<int>(parent->children.size());
        ancestors.push_back(node.get());
        parent->children.push_back(std::move(node));
    }
}

std::unique_ptr<TreeModel::Node> TreeModel::makeNode(std::shared_ptr<kyr::IReflected> object,
                                                     Node* parent)
{
    auto node = std::make_unique<Node>();
    node->name = object->reflectedName();
    node->object = std::move(object);
    node->objectValue = QVariant::fromValue(kyr::ReflectedObject(node->object));
    node->parent = parent;
    m_nodes[node->object.get()] = node.get();
    return node;
}

void TreeModel::renumber(Node& parent, int from)
{
    for (std::size_t row = static_cast<std::size_t>(from); row < parent.children.size(); ++row)
        parent.children[row]->row = static_cast<int>(row);
}

void TreeModel::insert(const QModelIndex& parent, int row, const std::vector<std::string>& names)
{
    std::vector<std::shared_ptr<kyr::IReflected>> objects;
    for (const std::string& name : names)
        objects.push_back(std::make_shared<NamedObject>(name));
    insertObjects(parent, row, objects);
}

void TreeModel::insertObjects(const QModelIndex& parent, int row,
                              const std::vector<std::shared_ptr<kyr::IReflected>>& objects)
{
    Node* owner = nodeAt(parent);
    beginInsertRows(parent, row, row + static_cast<int>(objects.size()) - 1);
    std::vector<std::unique_ptr<Node>> nodes;
    for (const auto& object : objects)
        nodes.push_back(makeNode(object, owner));
    owner->children.insert(owner->children.begin() + row, std::make_move_iterator(nodes.begin()),
                           std::make_move_iterator(nodes.end()));
    renumber(*owner, row);
    endInsertRows();
}

void TreeModel::append(const QModelIndex& parent, int count)
{
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i)
        names.push_back("row" + std::to_string(m_made++));
    insert(parent, rowCount(parent), names);
}

void TreeModel::remove(const QModelIndex& parent, int row, int count)
{
    Node* owner = nodeAt(parent);
    beginRemoveRows(parent, row, row + count - 1);
    const auto first = owner->children.begin() + row;
    std::for_each(first, first + count,
                  [this](const auto& node) { m_nodes.erase(node->object.get()); });
    owner->children.erase(first, first + count);
    renumber(*owner, row);
    endRemoveRows();
}

bool TreeModel::move(const QModelIndex& parent, int row, int count, const QModelIndex& to,
                     int toRow)
{
    if (!beginMoveRows(parent, row, row + count - 1, to, toRow))
        return false;
    Node* from = nodeAt(parent);
    Node* target = nodeAt(to);
    const auto first = from->children.begin() + row;
    std::vector<std::unique_ptr<Node>> moved(std::make_move_iterator(first),
                                             std::make_move_iterator(first + count));
    from->children.erase(first, first + count);
    for (const auto& node : moved)
        node->parent = target;
    const int place = from == target && toRow > row ? toRow - count : toRow;
    target->children.insert(target->children.begin() + place,
                            std::make_move_iterator(moved.begin()),
                            std::make_move_iterator(moved.end()));
    renumber(*from, 0);
    renumber(*target, 0);
    endMoveRows();
    return true;
}

void TreeModel::reverse(const QModelIndex& parent, LayoutChangeHint hint)
{
    Node* owner = nodeAt(parent);
    Q_EMIT layoutAboutToBeChanged({QPersistentModelIndex(parent)}, hint);
    const QModelIndexList before = persistentIndexList();
    std::reverse(owner->children.begin(), owner->children.end());
    renumber(*owner, 0);
    QModelIndexList after;
    for (const QModelIndex& index : before) {
        const auto* node = static_cast<const Node*>(index.internalPointer());
        after.append(createIndex(node->row, index.column(), index.internalPointer()));
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({QPersistentModelIndex(parent)}, hint);
}

void TreeModel::resetTo(const std::string& text)
{
    beginResetModel();
    parse(text);
    endResetModel();
}

void TreeModel::emitUnannouncedInsertion(const QModelIndex& parent, int first, int last)
{
    QMetaObject::invokeMethod(this, "rowsInserted", Q_ARG(QModelIndex, parent), Q_ARG(int, first),
                              Q_ARG(int, last));
}

void TreeModel::emitUnannouncedRemoval(const QModelIndex& parent, int first, int last)
{
    QMetaObject::invokeMethod(this, "rowsRemoved", Q_ARG(QModelIndex, parent), Q_ARG(int, first),
                              Q_ARG(int, last));
}

QModelIndex TreeModel::find(const std::string& name) const
{
    for (const auto& [object, node] : m_nodes) {
        if (node->name == name)
            return indexOf(node);
    }
    return {};
}

QModelIndex TreeModel::indexOf(const kyr::IReflected* object) const
{
    const auto found = m_nodes.find(object);
    return found == m_nodes.end() ? QModelIndex() : indexOf(found->second);
}

QModelIndex TreeModel::indexOf(const Node* node) const
{
    return node == m_root.get() ? QModelIndex()
                                : createIndex(node->row, 0, const_cast<Node*>(node));
}

kyr::ReflectedObject TreeModel::object(const std::string& name) const
{
    const QModelIndex index = find(name);
    return index.isValid() ? kyr::ReflectedObject(nodeAt(index)->object) : kyr::ReflectedObject();
}

void TreeModel::setObjectValue(const std::string& name, const QVariant& value)
{
    nodeAt(find(name))->objectValue = value;
}

void TreeModel::setRowFlags(const std::string& name, Qt::ItemFlags flags)
{
    nodeAt(find(name))->flags = flags;
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

TreeModel::Node* TreeModel::nodeAt(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : m_root.get();
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const
{
    const Node* owner = nodeAt(parent);
    if (row < 0 || row >= static_cast<int>(owner->children.size()) || column < 0 ||
        column >= m_columns || parent.column() > 0)
        return {};
    return createIndex(row, column, owner->children[static_cast<std::size_t>(row)].get());
}

QModelIndex TreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOf(nodeAt(child)->parent) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(nodeAt(parent)->children.size());
}

int TreeModel::columnCount(const QModelIndex&) const
{
    return m_columns;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromStdString(nodeAt(index)->name);
    return role == objectRole ? nodeAt(index)->objectValue : QVariant();
}

Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? nodeAt(index)->flags : Qt::ItemFlags();
}

void TreeAssetModel::setObjectHovered(const kyr::ReflectedObject& object, bool hovered)
{
    m_hoverLog += (m_hoverLog.empty() ? "" : " ") + std::string(hovered ? "+" : "-") +
                  object.reference().name();
}

} // namespace test
