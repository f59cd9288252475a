#pragma once

#include "wide_tree.h"

#include <editor/document/scene_shape.h>

#include <QAbstractItemModel>
#include <QItemSelection>

#include <memory>
#include <unordered_map>
#include <vector>

namespace bench {

using Shape = editor::SceneShape;

/// Objects in one of the shapes; every row has one.
class ShapedTree : public QAbstractItemModel
{
public:
    ShapedTree(Shape shape, int count) : m_nodes(std::size_t(count) + 1)
    {
        const std::vector<int> parents = editor::parentsOf(shape, count);
        for (int object = 0; object < count; ++object) {
            const auto parent = std::size_t(parents[std::size_t(object)] + 1);
            const auto id = std::size_t(object) + 1;
            m_nodes[id].parent = parent;
            m_nodes[id].row = int(m_nodes[parent].children.size());
            m_nodes[id].object = std::make_shared<PlainObject>();
            m_nodes[parent].children.push_back(id);
            m_places.emplace(m_nodes[id].object.get(), id);
        }
    }

    /// Says that everything may have changed, which nothing has.
    void reset()
    {
        beginResetModel();
        endResetModel();
    }

    /// Where an object is: below an object, or at the top (-1).
    struct Place
    {
        int parent;
        int row;
    };
    Place placeOf(int object) const
    {
        const Node& node = m_nodes[std::size_t(object) + 1];
        return {int(node.parent) - 1, node.row};
    }
    /// Takes an object away with all below it, until it is put back.
    void take(int object)
    {
        const auto [parent, row] = placeOf(object);
        beginRemoveRows(indexAt(parent), row, row);
        detach(object);
        endRemoveRows();
    }
    void putBack(int object, const Place& place)
    {
        beginInsertRows(indexAt(place.parent), place.row, place.row);
        attach(object, place);
        endInsertRows();
    }
    /// `place` is where the object is afterwards.
    void move(int object, const Place& place)
    {
        const auto [parent, row] = placeOf(object);
        const bool passesItself = parent == place.parent && row < place.row;
        beginMoveRows(indexAt(parent), row, row, indexAt(place.parent),
                      place.row + (passesItself ? 1 : 0));
        detach(object);
        attach(object, place);
        endMoveRows();
    }

    kyr::ReflectedObject objectAt(int object) const
    {
        return kyr::ReflectedObject(m_nodes[std::size_t(object) + 1].object);
    }
    QModelIndex indexOf(const kyr::IReflected* object) const
    {
        const std::size_t id = m_places.at(object);
        return createIndex(m_nodes[id].row, 0, id);
    }

    // Indexes carry the place of their node; 0 is the root, which has no index.
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override
    {
        const auto& children = m_nodes[parent.internalId()].children;
        return row < 0 || std::size_t(row) >= children.size()
                   ? QModelIndex()
                   : createIndex(row, column, children[std::size_t(row)]);
    }
    QModelIndex parent(const QModelIndex& child) const override
    {
        const std::size_t id = m_nodes[child.internalId()].parent;
        return id == 0 ? QModelIndex() : createIndex(m_nodes[id].row, 0, id);
    }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        return int(m_nodes[parent.internalId()].children.size());
    }
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != 358)
            return {};
        return QVariant::fromValue(kyr::ReflectedObject(m_nodes[index.internalId()].object));
    }

private:
    struct Node
    {
        std::size_t parent = 0;
        int row = 0;
        std::vector<std::size_t> children;
        std::shared_ptr<PlainObject> object;
    };

    QModelIndex indexAt(int object) const
    {
        const auto id = std::size_t(object + 1);
        return id == 0 ? QModelIndex() : createIndex(m_nodes[id].row, 0, id);
    }
    void detach(int object)
    {
        const auto [parent, row] = placeOf(object);
        auto& children = m_nodes[std::size_t(parent + 1)].children;
        children.erase(children.begin() + row);
        numberFrom(children, row);
    }
    void attach(int object, const Place& place)
    {
        auto& children = m_nodes[std::size_t(place.parent + 1)].children;
        children.insert(children.begin() + place.row, std::size_t(object) + 1);
        m_nodes[std::size_t(object) + 1].parent = std::size_t(place.parent + 1);
        numberFrom(children, place.row);
    }
    void numberFrom(const std::vector<std::size_t>& children, int row)
    {
        for (auto place = std::size_t(row); place < children.size(); ++place)
            m_nodes[children[place]].row = int(place);
    }

    std::vector<Node> m_nodes;
    std::unordered_map<const kyr::IReflected*, std::size_t> m_places;
};

/// Calls `visit` with the index of every row, the rows of a parent one after the other.
template <typename Visit>
void walk(const ShapedTree& tree, const Visit& visit)
{
    std::vector<QModelIndex> parents{QModelIndex()};
    while (!parents.empty()) {
        const QModelIndex parent = parents.back();
        parents.pop_back();
        const int rows = tree.rowCount(parent);
        for (int row = 0; row < rows; ++row) {
            const QModelIndex index = tree.index(row, 0, parent);
            visit(index);
            if (tree.rowCount(index) > 0)
                parents.push_back(index);
        }
    }
}

/// One range for all rows of a parent.
inline QItemSelection allRows(const ShapedTree& tree)
{
    QItemSelection rows;
    walk(tree, [&](const QModelIndex& index) {
        const int count = tree.rowCount(index.parent());
        if (index.row() == 0)
            rows.append(QItemSelectionRange(index, index.sibling(count - 1, 0)));
    });
    return rows;
}

} // namespace bench
