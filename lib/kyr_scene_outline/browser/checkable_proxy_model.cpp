#include "checkable_proxy_model.h"

SceneBrowserCheckableProxyModel::~SceneBrowserCheckableProxyModel() = default;

Qt::ItemFlags SceneBrowserCheckableProxyModel::flags(const QModelIndex& index) const
{
    if (rowCount(index) == 0)
        return KCheckableProxyModel::flags(index);
    return QAbstractProxyModel::flags(index); // NOLINT(bugprone-parent-virtual-call): no check box
}

QHash<int, QByteArray> SceneBrowserCheckableProxyModel::roleNames() const
{
    QHash<int, QByteArray> names = KCheckableProxyModel::roleNames();
    names.insert(Qt::CheckStateRole, "checked");
    return names;
}
