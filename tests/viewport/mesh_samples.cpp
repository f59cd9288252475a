#include "mesh_samples.h"

namespace editor {

MeshGeometryPtr cubeMesh()
{
    std::vector<QVector3D> corners;
    for (int i = 0; i < 8; ++i)
        corners.push_back(Box{{-0.5f, -0.5f, -0.5f}, {0.5f, 0.5f, 0.5f}}.corner(i));
    return std::make_shared<const MeshGeometry>(
        corners, std::vector<QVector3D>(),
        std::vector<quint32>{0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                             2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5});
}

MeshGeometryPtr randomMesh(std::mt19937& random, int triangles)
{
    std::uniform_real_distribution<float> within(-0.5f, 0.5f);
    std::vector<QVector3D> positions;
    std::vector<quint32> indices;
    for (int i = 0; i < triangles; ++i) {
        const QVector3D centre(within(random), within(random), within(random));
        for (quint32 corner = 0; corner < 3; ++corner) {
            positions.push_back(centre +
                                QVector3D(within(random), within(random), within(random)) * 0.3f);
            // Now and then a corner comes twice.
            indices.push_back(quint32(positions.size() - 1) - (corner == 2 && i % 7 == 0 ? 1 : 0));
        }
    }
    return std::make_shared<const MeshGeometry>(positions, std::vector<QVector3D>(), indices);
}

ViewportItem meshItem(quint32 id, MeshGeometryPtr mesh, const QVector3D& position,
                      const QColor& color)
{
    ViewportItem item;
    item.id = id;
    item.geometry = std::move(mesh);
    item.transform.translate(position);
    item.color = color;
    return item;
}

ViewportItem lightItem(quint32 id, const QVector3D& position)
{
    ViewportItem item = meshItem(id, nullptr, position);
    item.kind = ViewportItem::Kind::Light;
    return item;
}

} // namespace editor
