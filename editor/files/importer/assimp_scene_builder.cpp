#include "assimp_scene_builder.h"

#include "gltf_document.h"
#include "transform_values.h"
#include <editor/document/transform_math.h>
#include <editor/files/scene_stream_writer.h>

#include <QCoreApplication>

#include <assimp/camera.h>
#include <assimp/light.h>
#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <algorithm>
#include <deque>
#include <map>

namespace editor {

namespace {

constexpr int namesShown = 5;

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

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
    std::map<std::string, std::deque<const T*>> m_items;
};

/// A node as the library has it, and as its file does: -1 where that is not known.
struct Source
{
    const aiNode* node;
    int inGltf;
};

class SceneBuilder
{
public:
    SceneBuilder(const aiScene& scene, const GltfDocument* gltf, ConeAngles cones,
                 SceneStreamWriter& writer)
        : m_scene(scene)
        , m_gltf(gltf)
        , m_meshes(scene.mNumMeshes, -1)
        , m_cones(cones)
        , m_writer(writer)
    {
        for (unsigned i = 0; i < scene.mNumLights; ++i)
            m_lights.add(*scene.mLights[i]);
        for (unsigned i = 0; i < scene.mNumCameras; ++i)
            m_cameras.add(*scene.mCameras[i]);
    }

    void build()
    {
        for (const Source& source : topNodes())
            addNode(source, -1);
        // Not by recursion: nothing limits how deep a file nests.
        while (!m_open.empty()) {
            const auto [source, object] = m_open.back();
            m_open.pop_back();
            for (unsigned i = 0; i < source.node->mNumChildren; ++i)
                addNode(childOf(source, i), object);
        }
        if (m_undrawn > 0) {
            const QString names = m_undrawnNames.join(QStringLiteral(", "));
            m_writer.note(tr("of points and lines only the vertices are kept, and they are not "
                             "drawn; meshes with such: %1 (%2)")
                              .arg(m_undrawn)
                              .arg(m_undrawn > namesShown ? names + QStringLiteral(", …") : names));
        }
    }

private:
    std::vector<Source> topNodes() const
    {
        const aiNode& root = *m_scene.mRootNode;
        std::vector<Source> nodes;
        if (m_gltf) {
            for (std::size_t i = 0; i < m_gltf->roots.size(); ++i)
                nodes.push_back(
                    {m_gltf->roots.size() == 1 ? &root : root.mChildren[i], m_gltf->roots[i]});
        } else if (hasBareRoot(m_scene)) {
            for (unsigned i = 0; i < root.mNumChildren; ++i)
                nodes.push_back({root.mChildren[i], -1});
        } else {
            nodes.push_back({&root, -1});
        }
        return nodes;
    }

    Source childOf(const Source& source, unsigned index) const
    {
        return {source.node->mChildren[index], m_gltf ? gltfNode(source)->children[index] : -1};
    }

    const GltfDocument::Node* gltfNode(const Source& source) const
    {
        return m_gltf ? &m_gltf->nodes[std::size_t(source.inGltf)] : nullptr;
    }

    void addNode(const Source& source, qint32 parent)
    {
        const aiNode& node = *source.node;
        std::vector<StreamedObject> carried = objectsOf(source);
        // One mesh alone is the object itself, as are a light or a camera.
        const bool isItself =
            !carried.empty() && (carried.size() == 1 || carried.front().kind != ObjectKind::Mesh);
        StreamedObject object = isItself ? carried.front() : StreamedObject();
        if (isItself)
            carried.erase(carried.begin());
        object.parent = parent;
        object.name = nameOf(source, object.kind);
        object.isExpanded = parent < 0 && !std::exchange(m_hasFirst, true);
        object.transform =
            transformOf(source, carried.empty() && node.mNumChildren == 0 ? &object : nullptr);
        const qint32 index = m_writer.object(object);
        for (StreamedObject& child : carried) {
            child.parent = index;
            m_writer.object(child);
        }
        if (node.mNumChildren > 0)
            m_open.emplace_back(source, index);
    }

    /// Light, camera and meshes of a node, each in its own place and by its own name.
    std::vector<StreamedObject> objectsOf(const Source& source)
    {
        std::vector<StreamedObject> objects;
        m_lightPlace.setToIdentity();
        m_cameraPlace.setToIdentity();
        if (const GltfDocument::Node* known = gltfNode(source)) {
            if (known->light) {
                const GltfDocument::Light& light = m_gltf->lights[std::size_t(*known->light)];
                add(objects, ObjectKind::Light, light.name).light = light.values;
            }
            if (known->camera) {
                const GltfDocument::Camera& camera = m_gltf->cameras[std::size_t(*known->camera)];
                add(objects, ObjectKind::Camera, camera.name).camera = camera.values;
            }
        } else {
            if (const aiLight* light = m_lights.take(*source.node)) {
                readLight(*light, m_cones, add(objects, ObjectKind::Light, "Light").light);
                m_lightPlace = placeOf(*light);
            }
            if (const aiCamera* camera = m_cameras.take(*source.node)) {
                readCamera(*camera, add(objects, ObjectKind::Camera, "Camera").camera);
                m_cameraPlace = placeOf(*camera);
            }
        }
        for (unsigned i = 0; i < source.node->mNumMeshes; ++i) {
            if (source.node->mMeshes[i] < m_scene.mNumMeshes)
                addMesh(objects, source.node->mMeshes[i]);
        }
        return objects;
    }

    static StreamedObject& add(std::vector<StreamedObject>& objects, ObjectKind kind,
                               const QByteArray& name)
    {
        StreamedObject object;
        object.kind = kind;
        object.name = name.isEmpty() ? QByteArray(fallbackName(kind)) : name;
        objects.push_back(object);
        return objects.back();
    }

    void addMesh(std::vector<StreamedObject>& objects, unsigned index)
    {
        const aiMesh& mesh = *m_scene.mMeshes[index];
        StreamedObject& object =
            add(objects, ObjectKind::Mesh, nameFrom(mesh.mName, fallbackName(ObjectKind::Mesh)));
        if (mesh.mMaterialIndex < m_scene.mNumMaterials)
            readMaterial(*m_scene.mMaterials[mesh.mMaterialIndex], object.material);
        if (m_meshes[index] < 0 && mesh.mNumVertices > 0)
            m_meshes[index] = writeMesh(mesh);
        object.mesh = m_meshes[index];
    }

    qint32 writeMesh(const aiMesh& mesh)
    {
        const MeshArrays arrays = arraysFrom(mesh);
        if (arrays.badVertices > 0) {
            m_writer.note(tr("mesh \"%1\": the places of %2 of %3 vertices are no finite numbers; "
                             "triangles that touch them are left out")
                              .arg(QString::fromUtf8(nameFrom(mesh.mName, "")).left(80))
                              .arg(arrays.badVertices)
                              .arg(mesh.mNumVertices));
        }
        if (arrays.otherFaces > 0 && ++m_undrawn <= namesShown)
            m_undrawnNames.append(QString::fromUtf8(nameFrom(mesh.mName, "Mesh")).left(80));
        return m_writer.mesh(arrays.positions, arrays.normals, arrays.indices);
    }

    static const char* fallbackName(ObjectKind kind)
    {
        return kind == ObjectKind::Mesh     ? "Mesh"
               : kind == ObjectKind::Light  ? "Light"
               : kind == ObjectKind::Camera ? "Camera"
                                            : "Group";
    }

    QByteArray nameOf(const Source& source, ObjectKind kind)
    {
        if (const GltfDocument::Node* known = gltfNode(source))
            return known->name ? *known->name : QByteArray(fallbackName(kind));
        const QByteArray name = nameFrom(source.node->mName, fallbackName(kind));
        const QString text = QString::fromUtf8(name);
        if (text.contains(QChar::ReplacementCharacter))
            m_writer.note(
                tr("the name \"%1\" is no valid UTF-8; what is not is replaced").arg(text));
        return name;
    }

    // What looks somewhere else than its node is turned, unless something else would turn along:
    // `alone` is a light or camera whose node has nothing besides.
    TransformComponent transformOf(const Source& source, const StreamedObject* alone)
    {
        TransformComponent transform;
        const GltfDocument::Node* known = gltfNode(source);
        if (known && known->transform)
            return *known->transform;
        QMatrix4x4 matrix = matrixFrom(source.node->mTransformation);
        if (alone && alone->kind == ObjectKind::Light)
            matrix *= m_lightPlace;
        else if (alone && alone->kind == ObjectKind::Camera)
            matrix *= m_cameraPlace;
        setFromMatrix(transform, matrix);
        if (isFinite(source.node->mTransformation) && isFinite(transform))
            return transform;
        m_writer.note(
            tr("the transform of node \"%1\" has numbers that are not finite or too large; "
               "it has none now")
                .arg(QString::fromUtf8(nameFrom(source.node->mName, "")).left(80)));
        return {};
    }

    const aiScene& m_scene;
    const GltfDocument* m_gltf;
    // By their index in the scene; -1 for those that are not written yet.
    std::vector<qint32> m_meshes;
    ConeAngles m_cones;
    SceneStreamWriter& m_writer;
    ByNodeName<aiLight> m_lights;
    ByNodeName<aiCamera> m_cameras;
    std::vector<std::pair<Source, qint32>> m_open;
    // Of the node in hand.
    QMatrix4x4 m_lightPlace;
    QMatrix4x4 m_cameraPlace;
    int m_undrawn = 0;
    QStringList m_undrawnNames;
    bool m_hasFirst = false;
};

} // namespace

bool isLikeGltf(const aiNode& root, const GltfDocument& gltf)
{
    if (gltf.roots.size() != 1 && root.mNumChildren != gltf.roots.size())
        return false;
    std::vector<Source> open;
    for (std::size_t i = 0; i < gltf.roots.size(); ++i)
        open.push_back({gltf.roots.size() == 1 ? &root : root.mChildren[i], gltf.roots[i]});
    while (!open.empty()) {
        const Source at = open.back();
        open.pop_back();
        const std::vector<int>& children = gltf.nodes[std::size_t(at.inGltf)].children;
        if (at.node->mNumChildren != children.size())
            return false;
        for (std::size_t i = 0; i < children.size(); ++i)
            open.push_back({at.node->mChildren[i], children[i]});
    }
    return true;
}

bool hasBareRoot(const aiScene& scene)
{
    const aiNode& root = *scene.mRootNode;
    const auto isAtRoot = [&root](const auto* item) { return item->mName == root.mName; };
    return root.mNumMeshes == 0 && root.mTransformation.IsIdentity() &&
           std::none_of(scene.mLights, scene.mLights + scene.mNumLights, isAtRoot) &&
           std::none_of(scene.mCameras, scene.mCameras + scene.mNumCameras, isAtRoot);
}

void writeObjects(const aiScene& scene, const GltfDocument* gltf, ConeAngles cones,
                  SceneStreamWriter& writer)
{
    SceneBuilder(scene, gltf, cones, writer).build();
}

} // namespace editor
