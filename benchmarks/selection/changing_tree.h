#pragma once

#include <QAbstractItemModel>

#include <memory>
#include <vector>

namespace bench {

/// Top-level rows with some rows each, which come, go and move; rows carry nothing.
class ChangingTree : public QAbstractItemModel
{
public:
    ChangingTree(int parents, int children)
    {
        for (int row = 0; row < parents; ++row)
            m_parents.push_back(std::make_unique<Parent>(Parent{row, children}));
    }

    void insertChild(int parent, int row)
    {
        beginInsertRows(index(parent, 0), row, row);
        ++m_parents[std::size_t(parent)]->children;
        endInsertRows();
    }
    void removeChildren(int parent, int row, int count)
    {
        beginRemoveRows(index(parent, 0), row, row + count - 1);
        m_parents[std::size_t(parent)]->children -= count;
        endRemoveRows();
    }
    void moveChild(int parent, int from, int to)
    {
        beginMoveRows(index(parent, 0), from, from, index(parent, 0), to);
        endMoveRows();
    }
    void removeParents(int row, int count)
    {
        beginRemoveRows({}, row, row + count - 1);
        m_parents.erase(m_parents.begin() + row, m_parents.begin() + row + count);
        for (std::size_t place = std::size_t(row); place < m_parents.size(); ++place)
            m_parents[place]->row = int(place);
        endRemoveRows();
    }

    // Children carry their parent, top-level rows nothing.
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override
    {
        return row < 0 || row >= rowCount(parent) ? QModelIndex()
               : parent.isValid()
                   ? createIndex(row, column, m_parents[std::size_t(parent.row())].get())
                   : createIndex(row, column);
    }
    QModelIndex parent(const QModelIndex& child) const override
    {
        const auto* owner = static_cast<const Parent*>(child.internalPointer());
        return owner ? createIndex(owner->row, 0) : QModelIndex();
    }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        if (!parent.isValid())
            return int(m_parents.size());
        return parent.internalPointer() ? 0 : m_parents[std::size_t(parent.row())]->children;
    }
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex&, int) const override { return {}; }

private:
    struct Parent
    {
        int row;
        int children;
    };
    std::vector<std::unique_ptr<Parent>> m_parents;
};

} // namespace bench
