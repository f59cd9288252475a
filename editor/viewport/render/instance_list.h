#pragma once

#include <editor/viewport/items/viewport_item.h>
#include <editor/viewport/render/instance.h>

#include <functional>

namespace editor {

/// Instances grouped into draw calls. Those of one mesh stand together; a long row of them is cut
/// into chunks, each with the box around it, so that most of what is out of view is not drawn.
class InstanceList
{
public:
    enum class Shape
    {
        Mesh,
        Marker
    };

    struct Entry
    {
        MeshGeometryPtr mesh;
        Shape shape;
        Instance instance;
        Box bounds;
        quint32 place; ///< of the item, as of ItemSet
    };
    struct Chunk
    {
        MeshGeometryPtr mesh;
        Shape shape;
        quint32 first;
        quint32 count;
        Box bounds;
        ItemRange items; ///< the first and the last one's places, and maybe others' in between
    };

    InstanceList() = default;
    /// Of one entry a mesh, for which `entryOf` is asked with its number, once each. Neighbours
    /// should be near each other in space. O(n).
    InstanceList(const std::vector<const MeshGeometry*>& meshes,
                 const std::function<Entry(quint32)>& entryOf);

    const std::vector<Instance>& instances() const { return m_instances; }
    const std::vector<Chunk>& chunks() const { return m_chunks; }
    /// Where the entry with that number stands among the instances.
    quint32 slotOf(quint32 index) const { return m_slots[index]; }

private:
    static constexpr quint32 chunkSize = 512;

    std::vector<Instance> m_instances;
    std::vector<Chunk> m_chunks;
    std::vector<quint32> m_slots;
};

} // namespace editor
