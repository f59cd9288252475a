#pragma once

#include <editor/document/scene_object.h>

#include <cstdint>
#include <vector>

namespace editor {

/// What of a scene becomes which element of a glTF file, as indices into the file's arrays. Refers
/// to the scene, which must outlive it.
struct GltfPlan
{
    static constexpr int none = -1;
    /// Position and normal.
    static constexpr int vertexStride = 24;

    struct Node
    {
        const SceneObject* object;
        /// The children of a node stand together.
        std::size_t firstChild = 0;
        int mesh = none;
        int light = none;
        int camera = none;
    };

    /// Geometry with a material.
    struct Mesh
    {
        const SceneObject* firstUser;
        std::size_t geometry;
        std::size_t material;
    };

    /// Its bytes in the buffer are the vertices, then the indices: one view and one accessor for
    /// points, two views and three accessors (positions, normals, indices) for triangles.
    struct Geometry
    {
        const MeshGeometry* geometry;
        const SceneObject* firstUser;
        std::size_t firstView;
        std::size_t firstAccessor;
        std::uint64_t offset;

        bool isPoints() const { return geometry->triangleCount() == 0; }
        std::uint64_t vertexBytes() const { return geometry->vertices().size() * vertexStride; }
        std::uint64_t indexBytes() const { return geometry->indices().size() * 4; }
    };

    /// The objects below the root, level by level.
    std::vector<Node> nodes;
    std::size_t rootCount = 0;
    std::vector<Mesh> meshes;
    std::vector<Geometry> geometries;
    std::vector<const MaterialComponent*> materials;
    std::vector<const SceneObject*> lights;
    std::vector<const SceneObject*> cameras;
    std::uint64_t bufferBytes = 0;
};

/// Throws `WriteFailure` for a material with a number that is not finite. Linear in the scene but
/// for n log n in different materials.
GltfPlan planGltf(const SceneObject& root);

} // namespace editor
