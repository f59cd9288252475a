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
    constexpr int attributeCount = 4; // three rows, and the colour with the place
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
    m_count = m_listed = quint32(list.instances().size());
    m_buffer.bind();
    m_buffer.allocate(int((m_count + spare) * sizeof(Instance)));
    m_buffer.write(0, list.instances().data(), int(m_count * sizeof(Instance)));
    m_buffer.release();
}

void InstanceBuffer::append(const InstanceList::Entry& entry)
{
    const quint32 slot = m_count++;
    const bool goesOn = slot > m_listed && m_chunks.back().mesh == entry.mesh &&
                        m_chunks.back().shape == entry.shape;
    if (!goesOn)
        m_chunks.push_back({entry.mesh, entry.shape, slot, 0, {}, {entry.place, entry.place}});
    InstanceList::Chunk& chunk = m_chunks.back();
    ++chunk.count;
    chunk.items.first = std::min(chunk.items.first, entry.place);
    chunk.items.end = std::max(chunk.items.end, entry.place + 1);
    apply({slot, entry.instance, entry.bounds});
}

void InstanceBuffer::apply(const Patch& patch)
{
    m_buffer.bind();
    m_buffer.write(int(patch.slot * sizeof(Instance)), &patch.instance, int(sizeof(Instance)));
    m_buffer.release();
    chunkOf(patch.slot)->bounds.include(patch.bounds);
}

std::vector<InstanceList::Chunk>::iterator InstanceBuffer::chunkOf(quint32 slot)
{
    return std::prev(std::upper_bound(
        m_chunks.begin(), m_chunks.end(), slot,
        [](quint32 wanted, const InstanceList::Chunk& chunk) { return wanted < chunk.first; }));
}

void InstanceBuffer::draw(InstanceList::Shape shape, const ConvexVolume& view, MeshCache& meshes,
                          const std::optional<ItemRange>& items)
{
    for (const InstanceList::Chunk& chunk : m_chunks) {
        const bool inView = shape == InstanceList::Shape::Marker ||
                            view.overlap(chunk.bounds) != ConvexVolume::Overlap::None;
        if (chunk.shape == shape && inView && (!items || items->meets(chunk.items)))
            drawInstances(chunk, chunk.first, chunk.count, meshes);
    }
}

void InstanceBuffer::drawSlot(quint32 slot, InstanceList::Shape shape, MeshCache& meshes)
{
    const InstanceList::Chunk& chunk = *chunkOf(slot);
    if (chunk.shape == shape)
        drawInstances(chunk, slot, 1, meshes);
}

void InstanceBuffer::drawInstances(const InstanceList::Chunk& chunk, quint32 first, quint32 count,
                                   MeshCache& meshes)
{
    meshes.bind(chunk.mesh);
    m_buffer.bind();
    auto* gl = QOpenGLContext::currentContext()->extraFunctions();
    bindInstances(gl, first);
    gl->glDrawElementsInstanced(GL_TRIANGLES, GLsizei(chunk.mesh->indices().size()),
                                GL_UNSIGNED_INT, nullptr, GLsizei(count));
}

Box InstanceBuffer::boundsOf(const ItemRange& items) const
{
    Box box;
    for (const InstanceList::Chunk& chunk : m_chunks) {
        if (items.meets(chunk.items))
            box.include(chunk.bounds);
    }
    return box;
}

} // namespace editor
