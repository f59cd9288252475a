#pragma once

#include <editor/viewport/items/item_set.h>
#include <editor/viewport/render/instance_list.h>

namespace editor {

/// What of a set of items is drawn, and where each of them stands in that.
struct DrawList
{
    static constexpr quint32 noSlot = ~quint32(0);

    DrawList() = default;
    /// On any thread. O(n).
    explicit DrawList(const ItemSet& items);

    InstanceList instances;
    std::vector<quint32> slots;              ///< by item
    std::vector<const MeshGeometry*> meshes; ///< by item
};

/// What to draw for an item; null for a group.
const MeshGeometryPtr& drawnMesh(const ViewportItem& item);
bool isDrawn(const ViewportItem& item);
InstanceList::Entry drawnEntry(const ItemSet& items, quint32 index);
InstanceList instancesOf(const ItemSet& items, const std::vector<quint32>& indices);

} // namespace editor
