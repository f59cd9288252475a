#pragma once

#include "wide_tree.h"

#include <editor/document/scene_shape.h>

#include <QAbstractItemModel>

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
    std::vector<Node> m_nodes;
    std::unordered_map<const kyr::IReflected*, std::size_t> m_places;
};

} // namespace bench
