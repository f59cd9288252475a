#include "checkable_proxy_model.h"

SceneBrowserCheckableProxyModel::~SceneBrowserCheckableProxyModel() = default;

Qt::ItemFlags SceneBrowserCheckableProxyModel::flags(const QModelIndex& index) const
{
    return rowCount(index) != 0 ? QAbstractProxyModel::flags(index)
                                : KCheckableProxyModel::flags(index);
}

QHash<int, QByteArray> SceneBrowserCheckableProxyModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractItemModel::roleNames();
    names.insert(Qt::CheckStateRole, "checked");
    return names;
}
