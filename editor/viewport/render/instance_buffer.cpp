#include "instance_buffer.h"

#include "mesh_cache.h"
#include "shader_program.h"

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>

#include <cstddef>

namespace editor {

namespace {

void bindInstances(QOpenGLExtraFunctions* gl, std::size_t first)
{
    constexpr int attributeCount = 4; // three rows and the colour
    for (int i = 0; i < attributeCount; ++i) {
        const auto location = GLuint(attribute::instanceRow + i);
        const std::size_t offset = first * sizeof(Instance) + std::size_t(i) * sizeof(float[4]);
        gl->glEnableVertexAttribArray(location);
        gl->glVertexAttribPointer(location, 4, GL_FLOAT, GL_FALSE, sizeof(Instance),
                                  reinterpret_cast<const void*>(offset));
        gl->glVertexAttribDivisor(location, 1);
    }
}

} // namespace

void InstanceBuffer::assign(InstanceList&& list)
{
    m_chunks = list.chunks();
    if (!m_buffer.isCreated()) {
        m_buffer.create();
        m_buffer.setUsagePattern(QOpenGLBuffer::DynamicDraw);
    }
    m_buffer.bind();
    m_buffer.allocate(list.instances().data(), int(list.instances().size() * sizeof(Instance)));
    m_buffer.release();
}

void InstanceBuffer::apply(const Patch& patch)
{
    m_buffer.bind();
    m_buffer.write(int(patch.slot * sizeof(Instance)), &patch.instance, int(sizeof(Instance)));
    m_buffer.release();
    const auto next = std::upper_bound(
        m_chunks.begin(), m_chunks.end(), patch.slot,
        [](quint32 slot, const InstanceList::Chunk& chunk) { return slot < chunk.first; });
    std::prev(next)->bounds.include(patch.bounds);
}

void InstanceBuffer::draw(InstanceList::Shape shape, const ConvexVolume& view, MeshCache& meshes)
{
    auto* gl = QOpenGLContext::currentContext()->extraFunctions();
    for (const InstanceList::Chunk& chunk : m_chunks) {
        const bool inView = shape == InstanceList::Shape::Marker ||
                            view.overlap(chunk.bounds) != ConvexVolume::Overlap::None;
        if (chunk.shape != shape || !inView)
            continue;
        meshes.bind(chunk.mesh);
        m_buffer.bind();
        bindInstances(gl, chunk.first);
        gl->glDrawElementsInstanced(GL_TRIANGLES, GLsizei(chunk.mesh->indices().size()),
                                    GL_UNSIGNED_INT, nullptr, GLsizei(chunk.count));
    }
}

} // namespace editor
