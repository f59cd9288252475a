#pragma once

#include <QAbstractItemModel>

#include <vector>

/// Groups with the same number of children each; rows cost it nothing to find, so that a benchmark
/// measures the list.
class GroupModel : public QAbstractItemModel
{
public:
    static constexpr int typeRole = Qt::UserRole;

    GroupModel(int groups, int children) : m_children(std::size_t(groups), children) {}

    void insert(int group, int row)
    {
        beginInsertRows(index(group, 0), row, row);
        ++m_children[std::size_t(group)];
        endInsertRows();
    }
    void remove(int group, int row)
    {
        beginRemoveRows(index(group, 0), row, row);
        --m_children[std::size_t(group)];
        endRemoveRows();
    }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override
    {
        return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : 0);
    }
    QModelIndex parent(const QModelIndex& index) const override
    {
        return index.internalId() == 0 ? QModelIndex()
                                       : createIndex(int(index.internalId()) - 1, 0, quintptr(0));
    }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        if (!parent.isValid())
            return int(m_children.size());
        return parent.internalId() == 0 ? m_children[std::size_t(parent.row())] : 0;
    }
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role == typeRole)
            return index.row() % 3 == 0 ? QStringLiteral("light") : QStringLiteral("mesh");
        return role == Qt::DisplayRole ? QVariant(index.row()) : QVariant();
    }
    QHash<int, QByteArray> roleNames() const override
    {
        return {{Qt::DisplayRole, "display"}, {typeRole, "type"}};
    }

private:
    std::vector<int> m_children;
};
