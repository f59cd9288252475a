#include "draw_list.h"

#include "marker_shapes.h"

namespace editor {

DrawList::DrawList(const ItemSet& items)
    : slots(items.items().size(), noSlot), meshes(items.items().size(), nullptr)
{
    std::vector<quint32> indices;
    indices.reserve(items.count());
    for (const quint32 index : items.spatialOrder()) {
        const ViewportItem& item = items.items()[index];
        if (!isDrawn(item))
            continue;
        indices.push_back(index);
        meshes[index] = drawnMesh(item).get();
    }
    instances = instancesOf(items, indices);
    for (quint32 i = 0; i < indices.size(); ++i)
        slots[indices[i]] = instances.slotOf(i);
}

const MeshGeometryPtr& drawnMesh(const ViewportItem& item)
{
    static const MeshGeometryPtr lightSign = makeLightSign();
    static const MeshGeometryPtr cameraSign = makeCameraSign();
    if (!item.isMarker())
        return item.geometry;
    return item.kind == ViewportItem::Kind::Light ? lightSign : cameraSign;
}

bool isDrawn(const ViewportItem& item)
{
    return item.visible && drawnMesh(item);
}

InstanceList::Entry drawnEntry(const ItemSet& items, quint32 index)
{
    const ViewportItem& item = items.items()[index];
    const quint32 place = items.placeOf(index);
    const auto shape = item.isMarker() ? InstanceList::Shape::Marker : InstanceList::Shape::Mesh;
    return {drawnMesh(item), shape, Instance(item.transform, item.color, place), item.bounds(),
            place};
}

InstanceList instancesOf(const ItemSet& items, const std::vector<quint32>& indices)
{
    std::vector<const MeshGeometry*> meshes;
    meshes.reserve(indices.size());
    for (const quint32 index : indices)
        meshes.push_back(drawnMesh(items.items()[index]).get());
    return InstanceList(meshes, [&](quint32 i) { return drawnEntry(items, indices[i]); });
}

} // namespace editor
