#pragma once

#include <editor/viewport/items/viewport_item.h>
#include <editor/viewport/render/instance.h>

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
    /// Entries near each other in `entries` should be near in space. O(n).
    explicit InstanceList(const std::vector<Entry>& entries);

    const std::vector<Instance>& instances() const { return m_instances; }
    const std::vector<Chunk>& chunks() const { return m_chunks; }
    /// Where entry `index` of the constructor stands among the instances.
    quint32 slotOf(quint32 index) const { return m_slots[index]; }

private:
    static constexpr quint32 chunkSize = 512;

    std::vector<Instance> m_instances;
    std::vector<Chunk> m_chunks;
    std::vector<quint32> m_slots;
};

} // namespace editor
