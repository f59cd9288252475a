#include "mesh_geometry.h"

namespace editor {

namespace {

std::vector<quint32> validTriangles(std::vector<quint32> indices, std::size_t positionCount)
{
    std::size_t kept = 0;
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const auto begin = indices.begin() + std::ptrdiff_t(i);
        if (std::all_of(begin, begin + 3, [&](quint32 index) { return index < positionCount; })) {
            std::copy(begin, begin + 3, indices.begin() + std::ptrdiff_t(kept));
            kept += 3;
        }
    }
    indices.resize(kept);
    return indices;
}

} // namespace

MeshGeometry::MeshGeometry(const std::vector<QVector3D>& positions,
                           const std::vector<QVector3D>& normals, std::vector<quint32> indices)
    : m_indices(validTriangles(std::move(indices), positions.size()))
{
    m_vertices.resize(positions.size());
    for (std::size_t i = 0; i < positions.size(); ++i)
        m_vertices[i].position = positions[i];

    const bool hasNormals = normals.size() == positions.size();
    std::vector<Box> boxes;
    boxes.reserve(triangleCount());
    for (quint32 i = 0; i < triangleCount(); ++i) {
        const Triangle corners = triangle(i);
        Box box;
        const QVector3D areaNormal =
            QVector3D::crossProduct(corners[1] - corners[0], corners[2] - corners[0]);
        for (quint32 corner = 0; corner < 3; ++corner) {
            box.include(corners[corner]);
            if (!hasNormals)
                m_vertices[m_indices[i * 3 + corner]].normal += areaNormal;
        }
        boxes.push_back(box);
    }
    for (std::size_t i = 0; i < m_vertices.size(); ++i)
        m_vertices[i].normal = hasNormals ? normals[i] : m_vertices[i].normal.normalized();
    m_triangles = Bvh(std::move(boxes));
}

Triangle MeshGeometry::triangle(quint32 index) const
{
    const std::size_t corner = std::size_t(index) * 3;
    return {m_vertices[m_indices[corner]].position, m_vertices[m_indices[corner + 1]].position,
            m_vertices[m_indices[corner + 2]].position};
}

std::optional<float> MeshGeometry::hit(const Ray& ray, float limit) const
{
    std::optional<float> nearest;
    m_triangles.visitRay(ray, limit, [&](quint32 index, float& nearer) {
        const auto distance = hitDistance(ray, triangle(index));
        if (distance && *distance <= nearer) {
            nearer = *distance;
            nearest = distance;
        }
    });
    return nearest;
}

bool MeshGeometry::meets(const ConvexVolume& volume) const
{
    bool met = false;
    m_triangles.visitVolume(volume, [&](quint32 index, ConvexVolume::Overlap overlap) {
        met = overlap == ConvexVolume::Overlap::Full || volume.meets(triangle(index));
        return !met;
    });
    return met;
}

} // namespace editor
