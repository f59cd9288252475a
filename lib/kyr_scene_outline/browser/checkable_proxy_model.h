#pragma once

#include <KCheckableProxyModel>

/// Gives the leaves of the columns model a check box that shows and changes whether their row is
/// selected. Rows with children are groups and have none.
class SceneBrowserCheckableProxyModel : public KCheckableProxyModel
{
    Q_OBJECT

public:
    using KCheckableProxyModel::KCheckableProxyModel;
    ~SceneBrowserCheckableProxyModel() override;

    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// The source's names, with `Qt::CheckStateRole` named "checked".
    QHash<int, QByteArray> roleNames() const override;
};
