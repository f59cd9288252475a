// Moving rows: by index and by drag and drop within one process.

#include "scene_item_model.h"

#include <editor/document/scene_document.h>

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>

namespace editor {

namespace {

const QString objectsMimeType = QStringLiteral("application/x-kyr-scene-objects");

} // namespace

bool SceneItemModel::moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
                              const QModelIndex& destinationParent, int destinationChild)
{
    SceneObject* from = objectAt(sourceParent);
    SceneObject* to = objectAt(destinationParent);
    if (!from || !to || count < 1 || sourceRow < 0 || sourceRow + count > rowCount(sourceParent))
        return false;
    const auto first = from->children().begin() + sourceRow;
    return m_document.reparent(SceneObjects(first, first + count), *to, destinationChild);
}

QStringList SceneItemModel::mimeTypes() const
{
    return {objectsMimeType};
}

QMimeData* SceneItemModel::mimeData(const QModelIndexList& indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    QVector<quint32> ids;
    for (const QModelIndex& index : indexes)
        ids << objectAt(index)->id();
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    // Identifiers mean nothing in another scene.
    stream << m_document.sceneKey() << ids;
    auto* data = new QMimeData;
    data->setData(objectsMimeType, bytes);
    return data;
}

SceneObjects SceneItemModel::draggedObjects(const QMimeData* data) const
{
    SceneObjects objects;
    if (!data)
        return objects;
    QDataStream stream(data->data(objectsMimeType));
    QUuid key;
    QVector<quint32> ids;
    stream >> key >> ids;
    if (key != m_document.sceneKey())
        return objects;
    for (const quint32 id : qAsConst(ids)) {
        if (SceneObject* object = m_document.objectById(id))
            objects.push_back(object->shared_from_this());
    }
    return objects;
}

bool SceneItemModel::canDropMimeData(const QMimeData* data, Qt::DropAction action, int, int,
                                     const QModelIndex& parent) const
{
    const SceneObject* target = objectAt(parent);
    if (action != Qt::MoveAction || !target)
        return false;
    const SceneObjects objects = draggedObjects(data);
    for (const SceneObjectPtr& object : objects) {
        if (object.get() == target || target->isInside(*object))
            return false;
    }
    // Told while the pointer is over the row, which says why nothing can be dropped there.
    if (target->isProtected())
        m_document.refuse(*target);
    return !objects.empty() && !target->isProtected();
}

bool SceneItemModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                                  const QModelIndex& parent)
{
    return canDropMimeData(data, action, row, column, parent) &&
           m_document.reparent(draggedObjects(data), *objectAt(parent), row);
}

} // namespace editor
