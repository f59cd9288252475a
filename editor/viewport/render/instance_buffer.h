#pragma once

#include "instance_list.h"

#include <QOpenGLBuffer>

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

    void assign(InstanceList&& list);
    void apply(const Patch& patch);
    bool isEmpty() const { return m_chunks.empty(); }

    /// Draws the chunks of a shape that may be in view with the bound program.
    void draw(InstanceList::Shape shape, const ConvexVolume& view, MeshCache& meshes);

private:
    QOpenGLBuffer m_buffer{QOpenGLBuffer::VertexBuffer};
    std::vector<InstanceList::Chunk> m_chunks;
};

} // namespace editor
