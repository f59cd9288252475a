#pragma once

#include <host/scene/asset_model.h>

namespace bench {

/// An item model for a browser, without activation or a way from an object to its row.
class BareAssetModel : public IAssetModel
{
public:
    explicit BareAssetModel(QAbstractItemModel* model) : m_model(model) {}
    QAbstractItemModel* itemModel() const override { return m_model; }
    QModelIndex indexOf(const kyr::ReflectedObject&) const override { return {}; }
    void setObjectHovered(const kyr::ReflectedObject&, bool) override { ++m_hoverMarks; }
    void activateItem(const QModelIndex&) override {}

    int hoverMarks() const { return m_hoverMarks; }

private:
    QAbstractItemModel* m_model;
    int m_hoverMarks = 0;
};

} // namespace bench
