#include "gltf_plan.h"

#include "scene_output.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>
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

MaterialValues finiteValuesOf(const SceneObject& object)
{
    const MaterialValues values = valuesOf(*object.material());
    if (!std::all_of(values.begin(), values.end(),
                     [](float value) { return std::isfinite(value); }))
        throw WriteFailure{
            QCoreApplication::translate("editor::SceneWriter",
                                        "the material of \"%1\" has a number that is not finite")
                .arg(object.displayName())};
    return values;
}

class Planner
{
public:
    GltfPlan plan(const SceneObject& root)
    {
        appendChildren(root);
        m_plan.rootCount = m_plan.nodes.size();
        for (std::size_t i = 0; i < m_plan.nodes.size(); ++i) {
            m_plan.nodes[i].firstChild = m_plan.nodes.size();
            appendChildren(*m_plan.nodes[i].object);
        }
        return std::move(m_plan);
    }

private:
    void appendChildren(const SceneObject& parent)
    {
        for (const SceneObjectPtr& child : parent.children())
            m_plan.nodes.push_back(nodeOf(*child));
    }

    GltfPlan::Node nodeOf(const SceneObject& object)
    {
        GltfPlan::Node node{&object};
        const MeshAssetPtr asset = object.mesh() ? object.mesh()->asset : nullptr;
        if (asset && !asset->geometry->vertices().empty())
            node.mesh = meshOf(object, *asset->geometry);
        if (object.light()) {
            node.light = int(m_plan.lights.size());
            m_plan.lights.push_back(&object);
        }
        if (object.camera()) {
            node.camera = int(m_plan.cameras.size());
            m_plan.cameras.push_back(&object);
        }
        return node;
    }

    int meshOf(const SceneObject& object, const MeshGeometry& geometry)
    {
        const auto [materialEntry, isNewMaterial] =
            m_materials.try_emplace(finiteValuesOf(object), m_plan.materials.size());
        if (isNewMaterial)
            m_plan.materials.push_back(object.material());
        const auto [geometryEntry, isNewGeometry] =
            m_geometries.try_emplace(&geometry, m_plan.geometries.size());
        if (isNewGeometry) {
            m_plan.geometries.push_back(
                {&geometry, &object, m_viewCount, m_accessorCount, m_plan.bufferBytes});
            const GltfPlan::Geometry& added = m_plan.geometries.back();
            m_plan.bufferBytes += added.vertexBytes() + added.indexBytes();
            m_viewCount += added.isPoints() ? 1 : 2;
            m_accessorCount += added.isPoints() ? 1 : 3;
        }
        const auto [meshEntry, isNewMesh] = m_meshes.try_emplace(
            {geometryEntry->second, materialEntry->second}, m_plan.meshes.size());
        if (isNewMesh)
            m_plan.meshes.push_back({&object, geometryEntry->second, materialEntry->second});
        return int(meshEntry->second);
    }

    GltfPlan m_plan;
    std::size_t m_viewCount = 0;
    std::size_t m_accessorCount = 0;
    std::map<MaterialValues, std::size_t> m_materials;
    std::map<const MeshGeometry*, std::size_t> m_geometries;
    std::map<std::pair<std::size_t, std::size_t>, std::size_t> m_meshes;
};

} // namespace

GltfPlan planGltf(const SceneObject& root)
{
    return Planner().plan(root);
}

} // namespace editor
