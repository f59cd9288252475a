#include "assimp_import.h"

#include "assimp_scene_builder.h"
#include "assimp_scene_repair.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>

namespace editor {

namespace {

constexpr double readShare = 0.6;
constexpr double processShare = 0.3;
constexpr double builtShare = 1.0;
constexpr float creaseAngle = 60;

class Handler final : public Assimp::ProgressHandler
{
public:
    explicit Handler(const ImportProgress& progress) : m_progress(progress) {}

    /// The part of the whole that the next reports are about.
    void setSpan(double from, double length)
    {
        m_from = from;
        m_length = length;
    }

    bool Update(float share) override
    {
        return m_progress(m_from + m_length * std::clamp(double(share), 0.0, 1.0));
    }
    void UpdateFileRead(int step, int steps) override { Update(portion(step, steps)); }
    void UpdatePostProcess(int step, int steps) override { Update(portion(step, steps)); }

private:
    static float portion(int step, int steps)
    {
        return steps > 0 ? static_cast<float>(step) / static_cast<float>(steps) : 1;
    }

    const ImportProgress& m_progress;
    double m_from = 0;
    double m_length = readShare;
};

QString reasonOf(const Assimp::Importer& importer)
{
    const QString reason = QString::fromUtf8(importer.GetErrorString()).simplified();
    return reason.isEmpty()
               ? QCoreApplication::translate("editor::SceneImport", "the file cannot be read")
               : reason;
}

// This importer alone keeps the angles as its format has them.
ConeAngles coneAnglesOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    const bool isGltf = suffix == QLatin1String("gltf") || suffix == QLatin1String("glb");
    return isGltf ? ConeAngles::FromAxis : ConeAngles::Whole;
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

} // namespace

SceneImport importWithAssimp(const QString& path, const ImportProgress& progress)
{
    Assimp::Importer importer;
    configure(importer);
    auto* handler = new Handler(progress);
    importer.SetProgressHandler(handler); // owns it from here on

    const aiScene* scene = importer.ReadFile(QFile::encodeName(path).toStdString(), 0);
    if (!progress(readShare))
        return {};
    if (!scene)
        return {nullptr, reasonOf(importer)};
    // The importer hands it out as constant, though it is the caller's to work on.
    const QString damage = repairScene(const_cast<aiScene&>(*scene));
    if (!damage.isEmpty())
        return {nullptr, damage};

    // In stages, because the library itself can hardly be stopped.
    const unsigned stages[] = {aiProcess_RemoveComponent | aiProcess_Triangulate |
                                   aiProcess_GenSmoothNormals,
                               aiProcess_JoinIdenticalVertices};
    const auto length = processShare / static_cast<double>(std::size(stages));
    double done = readShare;
    for (const unsigned stage : stages) {
        handler->setSpan(done, length);
        scene = scene ? importer.ApplyPostProcessing(stage) : nullptr;
        done += length;
        if (!progress(done))
            return {};
    }
    if (!scene)
        return {nullptr, reasonOf(importer)};
    SceneObjectPtr root = buildScene(*scene, coneAnglesOf(path));
    root->setName(QFileInfo(path).completeBaseName().toStdString());
    if (!progress(builtShare))
        return {};
    return {std::move(root), {}};
}

bool isAssimpFormat(const QString& suffix)
{
    return !suffix.isEmpty() &&
           Assimp::Importer().IsExtensionSupported('.' + suffix.toLower().toStdString());
}

QStringList assimpPatterns()
{
    std::string patterns;
    Assimp::Importer().GetExtensionList(patterns);
    return QString::fromStdString(patterns).split(QLatin1Char(';'), Qt::SkipEmptyParts);
}

} // namespace editor
