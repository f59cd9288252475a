#pragma once

#include <editor/geometry/mesh_geometry.h>

#include <memory>
#include <string>

namespace editor {

/// A mesh that any number of objects share.
struct MeshAsset
{
    /// Never null.
    MeshGeometryPtr geometry;
    /// What the geometry was made from, such as "box 1 2 1"; empty for imported geometry.
    std::string source;
};

using MeshAssetPtr = std::shared_ptr<const MeshAsset>;

} // namespace editor
