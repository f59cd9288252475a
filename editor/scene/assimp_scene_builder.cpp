#include "assimp_scene_builder.h"

#include "assimp_values.h"

#include <editor/scene/transform_math.h>

#include <assimp/camera.h>
#include <assimp/light.h>
#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <unordered_map>

namespace editor {

namespace {

class SceneBuilder
{
public:
    explicit SceneBuilder(const aiScene& scene) : m_scene(scene), m_meshes(scene.mNumMeshes)
    {
        for (unsigned i = 0; i < scene.mNumLights; ++i)
            m_lights.emplace(scene.mLights[i]->mName.C_Str(), scene.mLights[i]);
        for (unsigned i = 0; i < scene.mNumCameras; ++i)
            m_cameras.emplace(scene.mCameras[i]->mName.C_Str(), scene.mCameras[i]);
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
        if (const auto light = m_lights.find(node.mName.C_Str()); light != m_lights.end()) {
            const SceneObjectPtr object = makeHolder(ObjectKind::Light, node, "Light");
            readLight(*light->second, *object->light());
            place(*object, node, matrix, placeOf(*light->second));
            return object;
        }
        if (const auto camera = m_cameras.find(node.mName.C_Str()); camera != m_cameras.end()) {
            const SceneObjectPtr object = makeHolder(ObjectKind::Camera, node, "Camera");
            readCamera(*camera->second, *object->camera());
            place(*object, node, matrix, placeOf(*camera->second));
            return object;
        }
        if (node.mNumMeshes == 1 && node.mMeshes[0] < m_scene.mNumMeshes) {
            const SceneObjectPtr object = makeMesh(nameFrom(node.mName, "Mesh"), node.mMeshes[0]);
            setFromMatrix(*object->transform(), matrix);
            return object;
        }
        const SceneObjectPtr object = makeHolder(ObjectKind::Group, node, "Group");
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
    std::unordered_map<std::string, const aiLight*> m_lights;
    std::unordered_map<std::string, const aiCamera*> m_cameras;
    std::vector<std::pair<const aiNode*, SceneObject*>> m_open;
};

} // namespace

SceneObjectPtr buildScene(const aiScene& scene)
{
    return SceneBuilder(scene).build();
}

} // namespace editor
