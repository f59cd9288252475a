#pragma once

#include <editor/viewport/render/instance_list.h>

#include <QOpenGLBuffer>

#include <optional>

namespace editor {

class MeshCache;

/// An InstanceList on the graphics card. Needs a current context throughout.
class InstanceBuffer
{
public:
    /// Replaces one instance.
    struct Patch
    {
        quint32 slot;
        Instance instance;
        Box bounds;
    };

    /// How many instances there is room for behind those of a list.
    static constexpr quint32 spare = 256;

    void assign(InstanceList&& list);
    /// Puts one behind the others; no more than `spare` since the list.
    void append(const InstanceList::Entry& entry);
    void apply(const Patch& patch);
    bool isEmpty() const { return m_chunks.empty(); }

    /// Draws the chunks of a shape that may be in view with the bound program. Given `items`, those
    /// without any of them are skipped; the program has to tell the others apart.
    void draw(InstanceList::Shape shape, const ConvexVolume& view, MeshCache& meshes,
              const std::optional<ItemRange>& items = std::nullopt);
    /// Draws one instance, if it is of that shape.
    void drawSlot(quint32 slot, InstanceList::Shape shape, MeshCache& meshes);

    /// Around the chunks that hold any of the items. Linear in chunks.
    Box boundsOf(const ItemRange& items) const;

private:
    void drawInstances(const InstanceList::Chunk& chunk, quint32 first, quint32 count,
                       MeshCache& meshes);
    std::vector<InstanceList::Chunk>::iterator chunkOf(quint32 slot);

    quint32 m_count = 0;  // instances in the buffer
    quint32 m_listed = 0; // of them, those of the list
    QOpenGLBuffer m_buffer{QOpenGLBuffer::VertexBuffer};
    std::vector<InstanceList::Chunk> m_chunks;
};

} // namespace editor
