#pragma once

#include <editor/geometry/mesh_geometry.h>

#include <QOpenGLBuffer>

#include <unordered_map>

namespace editor {

/// The meshes on the graphics card. Needs a current context throughout.
class MeshCache
{
public:
    /// Binds a mesh as the source of vertices and indices; uploads it the first time.
    void bind(const MeshGeometryPtr& mesh);
    /// Frees the meshes that nobody but the cache holds any more.
    void purge();

private:
    struct Buffers
    {
        MeshGeometryPtr mesh;
        QOpenGLBuffer vertices{QOpenGLBuffer::VertexBuffer};
        QOpenGLBuffer indices{QOpenGLBuffer::IndexBuffer};
    };

    static void upload(Buffers& buffers);

    std::unordered_map<const MeshGeometry*, Buffers> m_buffers;
};

} // namespace editor
