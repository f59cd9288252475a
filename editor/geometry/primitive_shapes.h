#pragma once

#include <editor/geometry/mesh_asset.h>

#include <string_view>

namespace editor {

/// The geometry of a shape that is written in words, in metres, y up:
/// - "box WIDTH HEIGHT DEPTH" and "plane WIDTH DEPTH", about their centre
/// - "prism WIDTH HEIGHT DEPTH", a gable roof whose ridge runs along z, standing on y = 0
/// - "cylinder RADIUS HEIGHT" and "cone RADIUS HEIGHT [TOPRADIUS]", standing on y = 0
/// - "sphere RADIUS" and "torus RADIUS TUBERADIUS" (lying flat), about their centre
/// Null for any other text.
MeshAssetPtr makePrimitive(std::string_view source);

} // namespace editor
