#include "assimp_scene_repair.h"

#include <QCoreApplication>

#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <algorithm>
#include <vector>

namespace editor {

namespace {

bool isSound(const aiMesh& mesh)
{
    if (mesh.mNumVertices > 0 && !mesh.mVertices)
        return false;
    const auto isFaceSound = [&mesh](const aiFace& face) {
        return face.mNumIndices == 0 ||
               (face.mIndices &&
                std::all_of(face.mIndices, face.mIndices + face.mNumIndices,
                            [&mesh](unsigned index) { return index < mesh.mNumVertices; }));
    };
    return mesh.mNumFaces == 0 ||
           (mesh.mFaces && std::all_of(mesh.mFaces, mesh.mFaces + mesh.mNumFaces, isFaceSound));
}

// They may have other vertex counts than their mesh, and nobody here shows them.
void removeMorphTargets(aiMesh& mesh)
{
    for (unsigned i = 0; i < mesh.mNumAnimMeshes; ++i)
        delete mesh.mAnimMeshes[i];
    delete[] mesh.mAnimMeshes;
    mesh.mAnimMeshes = nullptr;
    mesh.mNumAnimMeshes = 0;
}

void removeMissingNodes(aiNode* root)
{
    std::vector<aiNode*> open{root};
    while (!open.empty()) {
        aiNode* node = open.back();
        open.pop_back();
        aiNode** const end = node->mChildren + node->mNumChildren;
        aiNode** const kept = std::remove(node->mChildren, end, nullptr);
        node->mNumChildren = unsigned(kept - node->mChildren);
        open.insert(open.end(), node->mChildren, kept);
    }
}

} // namespace

QString repairScene(aiScene& scene)
{
    if (!scene.mRootNode)
        return QCoreApplication::translate("editor::SceneImport", "it holds no scene");
    removeMissingNodes(scene.mRootNode);
    for (unsigned i = 0; i < scene.mNumMeshes; ++i) {
        aiMesh* mesh = scene.mMeshes[i];
        if (!mesh || !isSound(*mesh)) {
            return QCoreApplication::translate("editor::SceneImport", "mesh \"%1\" is damaged")
                .arg(QString::fromUtf8(mesh ? mesh->mName.C_Str() : ""));
        }
        removeMorphTargets(*mesh);
    }
    return {};
}

} // namespace editor
