#include "left_out.h"

#include "assimp_scene_builder.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <assimp/material.h>
#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <algorithm>
#include <set>
#include <string>

namespace editor {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

int countTextures(const aiScene& scene)
{
    std::set<std::string> paths;
    for (unsigned i = 0; i < scene.mNumMaterials; ++i) {
        const aiMaterial& material = *scene.mMaterials[i];
        for (unsigned at = 0; at < material.mNumProperties; ++at) {
            const aiMaterialProperty& property = *material.mProperties[at];
            aiString path;
            if (property.mKey == aiString(_AI_MATKEY_TEXTURE_BASE) &&
                material.Get(_AI_MATKEY_TEXTURE_BASE, property.mSemantic, property.mIndex, path) ==
                    aiReturn_SUCCESS)
                paths.insert(path.C_Str());
        }
    }
    return int(paths.size());
}

template <typename Has>
int countMeshes(const aiScene& scene, Has has)
{
    return int(std::count_if(scene.mMeshes, scene.mMeshes + scene.mNumMeshes,
                             [&has](const aiMesh* mesh) { return mesh && has(*mesh); }));
}

/// Whether the library has made the name up, as it does where a format has none: the file does not
/// say it then.
bool isMadeUp(const QByteArray& name, const QString& path)
{
    const QFileInfo info(path);
    // Which every such file speaks of.
    if (info.suffix().toLower() == QLatin1String("fbx"))
        return name == "RootNode";
    static const QRegularExpression known(
        QStringLiteral("^(<.*>|\\$.*|ROOT|VisualSceneNode|3MF|AC(World|Poly)_.*|Pivot-.*)$"));
    const QString text = QString::fromUtf8(name);
    QFile file(path);
    return (known.match(text).hasMatch() || text.endsWith(info.fileName())) &&
           file.open(QIODevice::ReadOnly) && !file.readAll().contains(name);
}

} // namespace

QStringList leftOut(const aiScene& scene)
{
    const std::pair<QString, int> figures[] = {
        {tr("animations"), int(scene.mNumAnimations)},
        {tr("textures"), countTextures(scene)},
        {tr("embedded images"), int(scene.mNumTextures)},
        {tr("meshes with bones"), countMeshes(scene, [](auto& mesh) { return mesh.HasBones(); })},
        {tr("meshes with morph targets"),
         countMeshes(scene, [](auto& mesh) { return mesh.mNumAnimMeshes > 0; })},
        {tr("meshes with texture coordinates"),
         countMeshes(scene, [](auto& mesh) { return mesh.HasTextureCoords(0); })},
        {tr("meshes with vertex colours"),
         countMeshes(scene, [](auto& mesh) { return mesh.HasVertexColors(0); })},
    };
    QStringList parts;
    for (const auto& [what, count] : figures) {
        if (count > 0)
            parts.append(QStringLiteral("%1 (%2)").arg(what).arg(count));
    }
    if (parts.isEmpty())
        return {};
    return {tr("not imported are %1").arg(parts.join(QStringLiteral(", ")))};
}

QStringList lostRoot(const aiScene& scene, const QString& path)
{
    const QByteArray name = nameFrom(scene.mRootNode->mName, "");
    if (!hasBareRoot(scene) || name.isEmpty() || isMadeUp(name, path))
        return {};
    return {tr("the root node \"%1\" only holds the others; the scene stands for it")
                .arg(QString::fromUtf8(name))};
}

} // namespace editor
