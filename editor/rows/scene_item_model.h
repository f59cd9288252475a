#pragma once

#include <editor/document/object_change.h>
#include <editor/document/scene_object.h>

#include <QAbstractItemModel>
#include <QVariantMap>

#include <unordered_set>

namespace editor {

class SceneDocument;

/// The scene as a tree of one column; the scene itself is the only top-level row.
/// Rows can be renamed, dragged into another place and take the marks of `setHovered`. Reflected
/// properties have the roles of `SceneProperties`; those that can be edited take a text or a bool.
///
/// Values of the item roles: type QString as of `kindId`; count int, the number of children;
/// expanded bool, whether the branch starts open, can be set; enabled bool, visible and not locked
/// with all above it; row buttons as of `rowButtons`, setting takes a map from id to new state;
/// hover bool; modified bool.
class SceneItemModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role
    {
        /// QString, the names of the objects above, without the scene's; of very many the nearest.
        PathRole = Qt::UserRole + 900,
    };

    /// The document must outlive the model.
    explicit SceneItemModel(SceneDocument& document, QObject* parent = nullptr);

    SceneDocument& document() const noexcept { return m_document; }
    /// Null for an invalid index.
    SceneObject* objectAt(const QModelIndex& index) const noexcept;
    /// Invalid for objects that are not in the scene. O(1).
    QModelIndex indexOf(const SceneObject* object) const;
    void setHovered(const SceneObject& object, bool hovered);

    QHash<int, QByteArray> roleNames() const override;
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    bool moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
                  const QModelIndex& destinationParent, int destinationChild) override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

private:
    void followDocument();
    void emitChanges(const ObjectChanges& changes);
    void finishReordering(SceneObject& parent);
    bool setRowButtons(SceneObject& object, const QVariantMap& states);
    bool setProperty(SceneObject& object, int role, const QVariant& value);
    void emitPathsBelow(SceneObject& top);
    std::vector<SceneObjectPtr> draggedObjects(const QMimeData* data) const;

    SceneDocument& m_document;
    std::unordered_set<quint32> m_hovered;
};

} // namespace editor
