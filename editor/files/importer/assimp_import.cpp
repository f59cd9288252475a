#include "assimp_import.h"

#include "assimp_scene_builder.h"
#include "assimp_scene_repair.h"
#include "gltf_document.h"
#include "left_out.h"
#include "scene_folder.h"
#include <editor/files/scene_stream_writer.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <vector>

namespace editor {

namespace {

constexpr double readShare = 0.6;
constexpr double processShare = 0.2;
constexpr float creaseAngle = 60;

class Handler final : public Assimp::ProgressHandler
{
public:
    explicit Handler(SceneStreamWriter& writer) : m_writer(writer) {}

    /// The part of the whole that the next reports are about.
    void setSpan(double from, double length)
    {
        m_from = from;
        m_length = length;
    }

    bool Update(float share) override
    {
        m_writer.progress(m_from + m_length * std::clamp(double(share), 0.0, 1.0));
        return true;
    }
    void UpdateFileRead(int step, int steps) override { Update(portion(step, steps)); }
    void UpdatePostProcess(int step, int steps) override { Update(portion(step, steps)); }

private:
    static float portion(int step, int steps) { return steps > 0 ? float(step) / float(steps) : 1; }

    SceneStreamWriter& m_writer;
    double m_from = 0;
    double m_length = readShare;
};

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

// A file that was refused is a better reason than what the library made of its absence.
QString reasonOf(const Assimp::Importer& importer, const SceneFolder& folder)
{
    if (!folder.refusals().isEmpty())
        return folder.refusals().join(QStringLiteral("; "));
    const QString reason = QString::fromUtf8(importer.GetErrorString()).simplified();
    return reason.isEmpty() ? tr("the file cannot be read") : reason;
}

bool isGltf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QLatin1String("gltf") || suffix == QLatin1String("glb");
}

void configure(Assimp::Importer& importer)
{
    // Pivots as nodes and meshes for bones would show up as objects nobody has made.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    // Nobody here shows them, and vertices that differ in nothing else are joined.
    importer.SetPropertyInteger(AI_CONFIG_PP_RVC_FLAGS,
                                aiComponent_BONEWEIGHTS | aiComponent_ANIMATIONS |
                                    aiComponent_TEXTURES | aiComponent_TEXCOORDS |
                                    aiComponent_TANGENTS_AND_BITANGENTS | aiComponent_COLORS);
    importer.SetPropertyFloat(AI_CONFIG_PP_GSN_MAX_SMOOTHING_ANGLE, creaseAngle);
}

/// Triangles with normals; null when that fails.
const aiScene* process(Assimp::Importer& importer, Handler& handler, bool keepsVertices)
{
    // In stages, which is as finely as the library tells its progress here.
    std::vector<unsigned> stages{aiProcess_RemoveComponent | aiProcess_Triangulate |
                                 aiProcess_GenSmoothNormals};
    if (!keepsVertices)
        stages.push_back(aiProcess_JoinIdenticalVertices);
    const auto length = processShare / double(stages.size());
    double done = readShare;
    const aiScene* scene = importer.GetScene();
    for (const unsigned stage : stages) {
        handler.setSpan(done, length);
        scene = scene ? importer.ApplyPostProcessing(stage) : nullptr;
        done += length;
        handler.Update(0);
    }
    return scene;
}

} // namespace

void importWithAssimp(const QString& path, SceneStreamWriter& writer)
{
    Assimp::Importer importer;
    configure(importer);
    auto* handler = new Handler(writer);
    auto* folder =
        new SceneFolder(path, isGltf(path) ? FileNames::PercentEncoded : FileNames::Plain);
    // The importer owns both from here on.
    importer.SetProgressHandler(handler);
    importer.SetIOHandler(folder);

    GltfDocument gltf;
    QString reason;
    if (isGltf(path) && !readGltf(folder->scene(), gltf, reason)) {
        writer.fail(reason);
        return;
    }
    const aiScene* scene = importer.ReadFile(QFile::encodeName(folder->scene()).toStdString(), 0);
    if (!scene) {
        writer.fail(reasonOf(importer, *folder));
        return;
    }
    // The importer hands it out as constant, though it is the caller's to work on.
    const QString damage = repairScene(const_cast<aiScene&>(*scene));
    if (!damage.isEmpty()) {
        writer.fail(damage);
        return;
    }
    const bool hasOwnNodes =
        !(gltf.nodes.empty() && gltf.roots.empty()) && isLikeGltf(*scene->mRootNode, gltf);
    const QStringList notes = folder->refusals() + leftOut(*scene) + gltf.notes +
                              (hasOwnNodes ? QStringList() : lostRoot(*scene, folder->scene()));
    // Where vertices are shared by the format itself, their number is the author's.
    scene = process(importer, *handler, isGltf(path));
    if (!scene) {
        writer.fail(reasonOf(importer, *folder));
        return;
    }
    for (const QString& note : notes)
        writer.note(note);
    // This importer alone keeps the angles as its format has them.
    const ConeAngles cones = isGltf(path) ? ConeAngles::FromAxis : ConeAngles::Whole;
    writeObjects(*scene, hasOwnNodes ? &gltf : nullptr, cones, writer);
    writer.finish();
}

} // namespace editor
