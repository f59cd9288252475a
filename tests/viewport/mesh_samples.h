#pragma once

#include <editor/viewport/items/viewport_item.h>

#include <random>

namespace editor {

/// A cube of edge length one around the origin.
MeshGeometryPtr cubeMesh();
/// Triangles strewn over a cube of edge length one, some of them without an area.
MeshGeometryPtr randomMesh(std::mt19937& random, int triangles);

ViewportItem meshItem(quint32 id, MeshGeometryPtr mesh, const QVector3D& position,
                      const QColor& color = Qt::gray);
ViewportItem lightItem(quint32 id, const QVector3D& position);

} // namespace editor
