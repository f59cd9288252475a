#pragma once

#include <editor/geometry/bvh.h>

#include <QByteArray>

#include <memory>
#include <vector>

namespace editor {

/// An immutable triangle mesh with all that drawing and picking need, worked out once on
/// construction. Construct it where the file is loaded, off the GUI thread; share it between the
/// items that show it.
class MeshGeometry
{
public:
    /// What is handed to the graphics card for a vertex.
    struct Vertex
    {
        QVector3D position;
        QVector3D normal;
    };

    /// `indices` name three positions a triangle; triangles that name a missing position are
    /// dropped. Normals are computed unless there is one a position. O(n log n).
    MeshGeometry(const std::vector<QVector3D>& positions, const std::vector<QVector3D>& normals,
                 std::vector<quint32> indices);

    const std::vector<Vertex>& vertices() const { return m_vertices; }
    const std::vector<quint32>& indices() const { return m_indices; }
    std::size_t triangleCount() const { return m_indices.size() / 3; }
    Triangle triangle(quint32 index) const;
    Box bounds() const { return m_triangles.bounds(); }

    /// The first triangle that the ray meets before `limit`, in units of the ray's direction.
    std::optional<float> hit(const Ray& ray, float limit) const;
    /// Whether any part of the surface is in the volume. Exact.
    bool meets(const ConvexVolume& volume) const;

private:
    std::vector<Vertex> m_vertices;
    std::vector<quint32> m_indices;
    Bvh m_triangles;
};

using MeshGeometryPtr = std::shared_ptr<const MeshGeometry>;

} // namespace editor
