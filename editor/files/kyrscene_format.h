#pragma once

#include <editor/geometry/mesh_asset.h>

#include <QByteArray>

#include <optional>

namespace editor {

// The bundled scene format: XML whose elements are the objects.
//
//     <kyrscene version="1">
//       <geometry id="1">BASE64</geometry>
//       <scene expanded="true">
//         <object kind="mesh" name="Wall" id="2">
//           <transform position="0 1.5 0"/>
//           <material baseColor="0.8 0.2 0.1 1"/>
//           <mesh source="box 4 3 0.2"/>
//         </object>
//       </scene>
//       <set name="Walls" objects="2 5"/>
//     </kyrscene>
//
// A property is an attribute named like it, in its text form; one that has its default value is
// left out. A component is an element named like it. References to objects are paths. A set is a
// selection that was given a name, by the identifiers of its objects.

namespace kyrscene {

constexpr int version = 1;

/// Vertices, normals and indices, compressed.
QByteArray encodeGeometry(const MeshGeometry& geometry);
/// How many bytes the encoded geometry unpacks to, by its own word. Nothing when it is no geometry
/// or promises more than can be.
std::optional<qint64> unpackedSize(const QByteArray& text);
/// Null when the bytes are damaged. Takes no more memory than they promise. Triangles with places
/// that are no finite numbers are left out and counted in `leftOut`.
MeshGeometryPtr decodeGeometry(const QByteArray& text, int& leftOut);

} // namespace kyrscene
} // namespace editor
