#include "gltf_scene.h"

#include <editor/document/scene_object.h>
#include <editor/document/transform_math.h>

#include <assimp/material.h>
#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <array>
#include <map>

namespace editor {

namespace {

using MaterialValues = std::array<float, 9>;

MaterialValues valuesOf(const MaterialComponent& material)
{
    const lumo::Color& base = material.baseColor;
    const lumo::Color& glow = material.emissive;
    return {base.r, base.g, base.b, base.a, material.metallic, material.roughness,
            glow.r, glow.g, glow.b};
}

std::unique_ptr<aiMaterial> makeMaterial(const MaterialComponent& material)
{
    auto made = std::make_unique<aiMaterial>();
    const lumo::Color& base = material.baseColor;
    const lumo::Color& glow = material.emissive;
    // The exporter multiplies the two.
    const aiColor4D baseColor(base.r, base.g, base.b, 1);
    const aiColor3D emissive(glow.r, glow.g, glow.b);
    made->AddProperty(&baseColor, 1, AI_MATKEY_BASE_COLOR);
    made->AddProperty(&emissive, 1, AI_MATKEY_COLOR_EMISSIVE);
    made->AddProperty(&material.metallic, 1, AI_MATKEY_METALLIC_FACTOR);
    made->AddProperty(&material.roughness, 1, AI_MATKEY_ROUGHNESS_FACTOR);
    made->AddProperty(&base.a, 1, AI_MATKEY_OPACITY);
    return made;
}

aiVector3D vectorTo(const QVector3D& vector)
{
    return {vector.x(), vector.y(), vector.z()};
}

std::unique_ptr<aiMesh> makeMesh(const MeshGeometry& geometry, unsigned material)
{
    auto mesh = std::make_unique<aiMesh>();
    mesh->mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    mesh->mMaterialIndex = material;
    mesh->mNumVertices = static_cast<unsigned>(geometry.vertices().size());
    mesh->mVertices = new aiVector3D[mesh->mNumVertices];
    mesh->mNormals = new aiVector3D[mesh->mNumVertices];
    for (unsigned i = 0; i < mesh->mNumVertices; ++i) {
        mesh->mVertices[i] = vectorTo(geometry.vertices()[i].position);
        mesh->mNormals[i] = vectorTo(geometry.vertices()[i].normal);
    }
    mesh->mNumFaces = static_cast<unsigned>(geometry.triangleCount());
    mesh->mFaces = new aiFace[mesh->mNumFaces];
    for (unsigned i = 0; i < mesh->mNumFaces; ++i) {
        mesh->mFaces[i].mNumIndices = 3;
        mesh->mFaces[i].mIndices = new unsigned[3];
        std::copy_n(geometry.indices().begin() + std::ptrdiff_t(i) * 3, 3,
                    mesh->mFaces[i].mIndices);
    }
    return mesh;
}

aiMatrix4x4 matrixTo(const QMatrix4x4& matrix)
{
    aiMatrix4x4 result;
    for (unsigned row = 0; row < 4; ++row) {
        for (unsigned column = 0; column < 4; ++column)
            result[row][column] = matrix(static_cast<int>(row), static_cast<int>(column));
    }
    return result;
}

/// Hands a vector of owned objects to an array of the C interface.
template <typename T>
void handOver(std::vector<std::unique_ptr<T>>& from, T**& array, unsigned& count)
{
    count = static_cast<unsigned>(from.size());
    array = new T*[from.size()];
    for (std::size_t i = 0; i < from.size(); ++i)
        array[i] = from[i].release();
}

class ExportBuilder
{
public:
    std::unique_ptr<aiScene> build(const SceneObject& root)
    {
        auto scene = std::make_unique<aiScene>();
        scene->mRootNode = makeNode(root).release();
        m_open.emplace_back(&root, scene->mRootNode);
        while (!m_open.empty()) {
            const auto [object, node] = m_open.back();
            m_open.pop_back();
            addChildren(*object, *node);
        }
        handOver(m_meshes, scene->mMeshes, scene->mNumMeshes);
        handOver(m_materials, scene->mMaterials, scene->mNumMaterials);
        return scene;
    }

private:
    void addChildren(const SceneObject& object, aiNode& node)
    {
        std::vector<std::unique_ptr<aiNode>> nodes;
        for (const SceneObjectPtr& child : object.children()) {
            nodes.push_back(makeNode(*child));
            nodes.back()->mParent = &node;
            if (!child->children().empty())
                m_open.emplace_back(child.get(), nodes.back().get());
        }
        if (!nodes.empty())
            handOver(nodes, node.mChildren, node.mNumChildren);
    }

    std::unique_ptr<aiNode> makeNode(const SceneObject& object)
    {
        auto node = std::make_unique<aiNode>(object.name());
        if (object.transform())
            node->mTransformation = matrixTo(matrixOf(*object.transform()));
        const MeshAssetPtr asset = object.mesh() ? object.mesh()->asset : nullptr;
        if (asset && asset->geometry->triangleCount() > 0) {
            node->mNumMeshes = 1;
            node->mMeshes = new unsigned[1]{meshIndex(*asset->geometry, *object.material())};
        }
        return node;
    }

    unsigned meshIndex(const MeshGeometry& geometry, const MaterialComponent& material)
    {
        const auto nextMaterial = static_cast<unsigned>(m_materials.size());
        const auto [materialEntry, isNewMaterial] =
            m_materialIndex.try_emplace(valuesOf(material), nextMaterial);
        if (isNewMaterial)
            m_materials.push_back(makeMaterial(material));
        const auto nextMesh = static_cast<unsigned>(m_meshes.size());
        const auto [meshEntry, isNewMesh] =
            m_meshIndex.try_emplace({&geometry, materialEntry->second}, nextMesh);
        if (isNewMesh)
            m_meshes.push_back(makeMesh(geometry, materialEntry->second));
        return meshEntry->second;
    }

    std::vector<std::unique_ptr<aiMesh>> m_meshes;
    std::vector<std::unique_ptr<aiMaterial>> m_materials;
    std::map<MaterialValues, unsigned> m_materialIndex;
    std::map<std::pair<const MeshGeometry*, unsigned>, unsigned> m_meshIndex;
    std::vector<std::pair<const SceneObject*, aiNode*>> m_open;
};

} // namespace

std::unique_ptr<aiScene> makeExportScene(const SceneObject& root)
{
    return ExportBuilder().build(root);
}

} // namespace editor
