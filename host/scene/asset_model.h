#pragma once

#include <host/reflection/reflected_object.h>

#include <QModelIndex>

class QAbstractItemModel;

/// The editor's scene as a tree of rows.
class IAssetModel
{
public:
    virtual ~IAssetModel() = default;

    /// The model that the tree shows; the same one for the lifetime of the asset model.
    virtual QAbstractItemModel* itemModel() const = 0;
    /// The row (column 0) of an object; invalid when it has none. Expected to cost O(1).
    virtual QModelIndex indexOf(const kyr::ReflectedObject& object) const = 0;
    /// Marks or unmarks an object as hovered; its row shows the mark.
    virtual void setObjectHovered(const kyr::ReflectedObject& object, bool hovered) = 0;
    /// What a double-click on a row does.
    virtual void activateItem(const QModelIndex& index) = 0;
};
