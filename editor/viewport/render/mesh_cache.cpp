#include "mesh_cache.h"

#include "shader_program.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <cstddef>

namespace editor {

void MeshCache::bind(const MeshGeometryPtr& mesh)
{
    Buffers& buffers = m_buffers[mesh.get()];
    if (!buffers.mesh) {
        buffers.mesh = mesh;
        upload(buffers);
    }
    buffers.vertices.bind();
    buffers.indices.bind();

    using Vertex = MeshGeometry::Vertex;
    QOpenGLFunctions* gl = QOpenGLContext::currentContext()->functions();
    const auto source = [gl](int location, std::size_t offset) {
        gl->glEnableVertexAttribArray(GLuint(location));
        gl->glVertexAttribPointer(GLuint(location), 3, GL_FLOAT, GL_FALSE, sizeof(Vertex),
                                  reinterpret_cast<const void*>(offset));
    };
    source(attribute::position, offsetof(Vertex, position));
    source(attribute::normal, offsetof(Vertex, normal));
}

void MeshCache::upload(Buffers& buffers)
{
    const auto& vertices = buffers.mesh->vertices();
    buffers.vertices.create();
    buffers.vertices.bind();
    buffers.vertices.allocate(vertices.data(), int(vertices.size() * sizeof vertices.front()));

    const auto& indices = buffers.mesh->indices();
    buffers.indices.create();
    buffers.indices.bind();
    buffers.indices.allocate(indices.data(), int(indices.size() * sizeof indices.front()));
}

void MeshCache::purge()
{
    for (auto it = m_buffers.begin(); it != m_buffers.end();)
        it = it->second.mesh.use_count() == 1 ? m_buffers.erase(it) : std::next(it);
}

} // namespace editor
