#pragma once

#include <host/reflection/reflected_object.h>

#include <QAbstractItemModel>

#include <memory>
#include <vector>

namespace bench {

class PlainObject : public kyr::IReflected
{
public:
    const kyr::ReflectedClass& reflectedClass() const override
    {
        static const kyr::ReflectedClass none{"PlainObject", {}};
        return none;
    }
};

/// `parents` top-level rows with `children` rows each; every row has an object.
class WideTree : public QAbstractItemModel
{
public:
    WideTree(int parents, int children) : m_parents(parents), m_children(children)
    {
        const int rows = parents * (children + 1);
        m_objects.reserve(std::size_t(rows));
        for (int row = 0; row < rows; ++row)
            m_objects.push_back(std::make_shared<PlainObject>());
    }

    // Top-level rows carry 0, children the number of their parent plus 1.
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override
    {
        return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : 0);
    }
    QModelIndex parent(const QModelIndex& child) const override
    {
        return child.internalId() == 0 ? QModelIndex()
                                       : createIndex(int(child.internalId()) - 1, 0, quintptr(0));
    }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        if (!parent.isValid())
            return m_parents;
        return parent.internalId() == 0 ? m_children : 0;
    }
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != 358)
            return {};
        return QVariant::fromValue(kyr::ReflectedObject(m_objects[numberOf(index)]));
    }

private:
    std::size_t numberOf(const QModelIndex& index) const
    {
        const int number =
            index.internalId() == 0
                ? index.row()
                : m_parents + (int(index.internalId()) - 1) * m_children + index.row();
        return std::size_t(number);
    }

    int m_parents;
    int m_children;
    std::vector<std::shared_ptr<PlainObject>> m_objects;
};

} // namespace bench
