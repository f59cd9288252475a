#include "assimp_import.h"

#include "assimp_scene_builder.h"

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
    QString reason = QString::fromUtf8(importer.GetErrorString()).simplified();
    while (reason.endsWith(QLatin1Char('.')) || reason.endsWith(QLatin1Char('!')))
        reason.chop(1);
    return reason.isEmpty()
               ? QCoreApplication::translate("editor::SceneImport", "the file cannot be read")
               : reason;
}

void configure(Assimp::Importer& importer)
{
    // Nodes that stand for a pivot only would show up as objects nobody has made.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    importer.SetPropertyFloat(AI_CONFIG_PP_GSN_MAX_SMOOTHING_ANGLE, creaseAngle);
}

} // namespace

SceneImport importWithAssimp(const QString& path, const ImportProgress& progress)
{
    Assimp::Importer importer;
    configure(importer);
    auto* handler = new Handler(progress);
    importer.SetProgressHandler(handler); // owns it from here on

    // In stages, because the library itself can hardly be stopped.
    const unsigned stages[] = {aiProcess_Triangulate | aiProcess_GenSmoothNormals,
                               aiProcess_JoinIdenticalVertices};
    const std::size_t stageCount = std::size(stages);
    const aiScene* scene =
        importer.ReadFile(QFile::encodeName(path).toStdString(), aiProcess_ValidateDataStructure);
    for (std::size_t stage = 0; scene && stage < stageCount; ++stage) {
        const double length = processShare / static_cast<double>(stageCount);
        handler->setSpan(readShare + length * static_cast<double>(stage), length);
        if (!handler->Update(0))
            return {};
        scene = importer.ApplyPostProcessing(stages[stage]);
    }
    if (!progress(readShare + processShare))
        return {};
    if (!scene)
        return {nullptr, reasonOf(importer)};
    SceneObjectPtr root = buildScene(*scene);
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
