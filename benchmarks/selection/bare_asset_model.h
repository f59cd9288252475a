#pragma once

#include <host/scene/asset_model.h>

namespace bench {

/// An item model for a browser, without hover, activation or a way from an object to its row.
class BareAssetModel : public IAssetModel
{
public:
    explicit BareAssetModel(QAbstractItemModel* model) : m_model(model) {}
    QAbstractItemModel* itemModel() const override { return m_model; }
    QModelIndex indexOf(const kyr::ReflectedObject&) const override { return {}; }
    void setObjectHovered(const kyr::ReflectedObject&, bool) override {}
    void activateItem(const QModelIndex&) override {}

private:
    QAbstractItemModel* m_model;
};

} // namespace bench
