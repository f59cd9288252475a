#pragma once

#include <editor/geometry/mesh_geometry.h>

namespace editor {

/// Flat signs within the unit circle: a round plate (normal.x = 0) under a symbol (normal.x = 1).
MeshGeometryPtr makeLightSign();
MeshGeometryPtr makeCameraSign();

} // namespace editor
