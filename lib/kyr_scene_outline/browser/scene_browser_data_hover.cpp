#include <kyr_scene_outline/scene_browser_data.h>

#include "row_object.h"

void SceneBrowserData::syncHover(const QModelIndex& hoveredItem)
{
    // Between the announcement and the end of a row update the index may not fit the model.
    if (m_rowsUpdates != 0 || !m_assetModel || !m_assetSelection || !hoveredItem.isValid())
        return;
    const QAbstractItemModel* itemModel = m_assetModel->itemModel();
    if (!itemModel)
        return;
    const QVariant value = itemModel->data(hoveredItem, kyr::ObjectRole);
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
    if (!m_assetModel)
        return;
    for (const kyr::PersistentObject& object : entered)
        m_assetModel->setObjectHovered(object.object(), true);
    for (const kyr::PersistentObject& object : left)
        m_assetModel->setObjectHovered(object.object(), false);
}
