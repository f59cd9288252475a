#include <kyr_scene_outline/scene_browser_data.h>

#include "row_object.h"

#include <QPointer>

void SceneBrowserData::syncHover(const QModelIndex& hoveredItem)
{
    // Between the announcement and the end of a row update the index may not fit the model.
    if (m_rowsUpdates != 0 || !m_assetModel || !m_assetSelection || !hoveredItem.isValid())
        return;
    const QPointer<SceneBrowserData> self(this);
    const QAbstractItemModel* itemModel = m_assetModel->itemModel();
    if (!self || !itemModel)
        return;
    const QVariant value = itemModel->data(hoveredItem, kyr::ObjectRole);
    if (self)
        m_assetSelection->setHoveredObjects({kyr::PersistentObject(kyr::objectOf(value))});
}

void SceneBrowserData::resetHover()
{
    if (m_assetSelection)
        m_assetSelection->setHoveredObjects({});
}

void SceneBrowserData::onDoubleClicked(const QModelIndex& index)
{
    if (m_assetModel && index.isValid())
        m_assetModel->activateItem(index);
}

// An object in both lists ends unmarked.
void SceneBrowserData::onHoverChanged(const IAssetSelection::Objects& entered,
                                      const IAssetSelection::Objects& left)
{
    const QPointer<SceneBrowserData> self(this);
    const auto mark = [this, &self](const IAssetSelection::Objects& objects, bool hovered) {
        for (const kyr::PersistentObject& object : objects) {
            if (!self || !m_assetModel)
                return;
            m_assetModel->setObjectHovered(object.object(), hovered);
        }
    };
    mark(entered, true);
    mark(left, false);
}
