#pragma once

#include <editor/rows/scene_item_model.h>
#include <host/scene/asset_model.h>

#include <QObject>

namespace editor {

/// The scene as the browser sees it.
class SceneAssetModel final : public QObject, public IAssetModel
{
    Q_OBJECT

public:
    /// The document must outlive the model.
    explicit SceneAssetModel(SceneDocument& document, QObject* parent = nullptr);

    SceneItemModel* sceneModel() const noexcept { return m_model; }

    QAbstractItemModel* itemModel() const override { return m_model; }
    QModelIndex indexOf(const kyr::ReflectedObject& object) const override;
    void setObjectHovered(const kyr::ReflectedObject& object, bool hovered) override;
    void activateItem(const QModelIndex& index) override;

Q_SIGNALS:
    /// A row was activated; views frame its object.
    void activated(editor::SceneObject* object);

private:
    SceneItemModel* m_model;
};

} // namespace editor
