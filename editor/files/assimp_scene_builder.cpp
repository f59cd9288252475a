#include "assimp_scene_builder.h"

#include <editor/document/transform_math.h>

#include <assimp/camera.h>
#include <assimp/light.h>
#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <deque>
#include <unordered_map>

namespace editor {

namespace {

/// Lights or cameras, which belong to the nodes of their names.
template <typename T>
class ByNodeName
{
public:
    void add(const T& item) { m_items[item.mName.C_Str()].push_back(&item); }

    /// Null for a node that is none. Nodes of the same name get one after the other.
    const T* take(const aiNode& node)
    {
        const auto found = m_items.find(node.mName.C_Str());
        if (found == m_items.end())
            return nullptr;
        auto& items = found->second;
        const T* item = items.front();
        if (items.size() > 1)
            items.pop_front();
        return item;
    }

private:
    std::unordered_map<std::string, std::deque<const T*>> m_items;
};

class SceneBuilder
{
public:
    SceneBuilder(const aiScene& scene, ConeAngles cones)
        : m_scene(scene), m_meshes(scene.mNumMeshes), m_cones(cones)
    {
        for (unsigned i = 0; i < scene.mNumLights; ++i)
            m_lights.add(*scene.mLights[i]);
        for (unsigned i = 0; i < scene.mNumCameras; ++i)
            m_cameras.add(*scene.mCameras[i]);
    }

    SceneObjectPtr build()
    {
        SceneObjectPtr root = SceneObject::create(ObjectKind::Scene, "Scene");
        root->setExpanded(true);
        if (const aiNode* node = m_scene.mRootNode) {
            if (isBareHolder(*node))
                addChildren(*node, *root);
            else
                addNode(*node, *root);
        }
        // Not by recursion: nothing limits how deep a file nests.
        while (!m_open.empty()) {
            const auto [node, object] = m_open.back();
            m_open.pop_back();
            addChildren(*node, *object);
        }
        return root;
    }

private:
    static bool isBareHolder(const aiNode& node)
    {
        return node.mNumMeshes == 0 && node.mNumChildren > 0 && node.mTransformation.IsIdentity();
    }

    void addChildren(const aiNode& node, SceneObject& object)
    {
        for (unsigned i = 0; i < node.mNumChildren; ++i) {
            if (node.mChildren[i])
                addNode(*node.mChildren[i], object);
        }
    }

    void addNode(const aiNode& node, SceneObject& parent)
    {
        const SceneObjectPtr object = makeObject(node);
        object->setExpanded(parent.kind() == ObjectKind::Scene && parent.children().empty());
        parent.append(object);
        if (node.mNumChildren > 0)
            m_open.emplace_back(&node, object.get());
    }

    SceneObjectPtr makeObject(const aiNode& node)
    {
        const QMatrix4x4 matrix = matrixFrom(node.mTransformation);
        if (const aiLight* light = m_lights.take(node)) {
            SceneObjectPtr object = makeHolder(ObjectKind::Light, node, "Light");
            readLight(*light, m_cones, *object->light());
            place(*object, node, matrix, placeOf(*light));
            return object;
        }
        if (const aiCamera* camera = m_cameras.take(node)) {
            SceneObjectPtr object = makeHolder(ObjectKind::Camera, node, "Camera");
            readCamera(*camera, *object->camera());
            place(*object, node, matrix, placeOf(*camera));
            return object;
        }
        if (node.mNumMeshes == 1 && node.mMeshes[0] < m_scene.mNumMeshes) {
            SceneObjectPtr object = makeMesh(nameFrom(node.mName, "Mesh"), node.mMeshes[0]);
            setFromMatrix(*object->transform(), matrix);
            return object;
        }
        SceneObjectPtr object = makeHolder(ObjectKind::Group, node, "Group");
        setFromMatrix(*object->transform(), matrix);
        return object;
    }

    // An object that has the node's meshes as children.
    SceneObjectPtr makeHolder(ObjectKind kind, const aiNode& node, const char* fallbackName)
    {
        SceneObjectPtr object = SceneObject::create(kind, nameFrom(node.mName, fallbackName));
        for (unsigned i = 0; i < node.mNumMeshes; ++i) {
            const unsigned mesh = node.mMeshes[i];
            if (mesh < m_scene.mNumMeshes)
                object->append(makeMesh(nameFrom(m_scene.mMeshes[mesh]->mName, "Mesh"), mesh));
        }
        return object;
    }

    // What looks somewhere else than its node is turned, unless something else would turn along.
    static void place(SceneObject& object, const aiNode& node, const QMatrix4x4& matrix,
                      const QMatrix4x4& within)
    {
        const bool isAlone = node.mNumChildren == 0 && node.mNumMeshes == 0;
        setFromMatrix(*object.transform(), isAlone ? matrix * within : matrix);
    }

    SceneObjectPtr makeMesh(std::string name, unsigned index)
    {
        SceneObjectPtr object = SceneObject::create(ObjectKind::Mesh, std::move(name));
        const aiMesh& mesh = *m_scene.mMeshes[index];
        MeshAssetPtr& asset = m_meshes[index];
        if (!asset)
            asset = meshFrom(mesh);
        object->mesh()->asset = asset;
        if (mesh.mMaterialIndex < m_scene.mNumMaterials)
            readMaterial(*m_scene.mMaterials[mesh.mMaterialIndex], *object->material());
        return object;
    }

    const aiScene& m_scene;
    std::vector<MeshAssetPtr> m_meshes;
    ConeAngles m_cones;
    ByNodeName<aiLight> m_lights;
    ByNodeName<aiCamera> m_cameras;
    std::vector<std::pair<const aiNode*, SceneObject*>> m_open;
};

} // namespace

SceneObjectPtr buildScene(const aiScene& scene, ConeAngles cones)
{
    return SceneBuilder(scene, cones).build();
}

} // namespace editor
