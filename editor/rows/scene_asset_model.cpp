#include "scene_asset_model.h"

namespace editor {

SceneAssetModel::SceneAssetModel(SceneDocument& document, QObject* parent)
    : QObject(parent), m_model(new SceneItemModel(document, this))
{}

QModelIndex SceneAssetModel::indexOf(const kyr::ReflectedObject& object) const
{
    return m_model->indexOf(sceneObjectOf(object));
}

void SceneAssetModel::setObjectHovered(const kyr::ReflectedObject& object, bool hovered)
{
    if (const SceneObject* hoveredObject = sceneObjectOf(object))
        m_model->setHovered(*hoveredObject, hovered);
}

void SceneAssetModel::activateItem(const QModelIndex& index)
{
    if (SceneObject* object = m_model->objectAt(index))
        Q_EMIT activated(object);
}

} // namespace editor
