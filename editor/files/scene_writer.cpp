#include "scene_writer.h"

#include "gltf_writer.h"
#include "kyrscene_writer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <new>

namespace editor {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneWriter", text);
}

QString suffixOf(const QString& path)
{
    return QFileInfo(path).suffix().toLower();
}

bool isGltf(const QString& path)
{
    return suffixOf(path) == QLatin1String("gltf") || suffixOf(path) == QLatin1String("glb");
}

void write(const SceneObject& root, const QString& path, const WriteProgress& progress)
{
    if (!canWriteScene(path))
        throw WriteFailure{tr("\".%1\" is no format that can be written").arg(suffixOf(path))};
    SceneOutput output(path, progress);
    if (isOwnFormat(path))
        writeKyrscene(root, output);
    else
        writeGltf(root, suffixOf(path) == QLatin1String("glb"), output);
    output.commit();
}

} // namespace

QString writeScene(const SceneObject& root, const QString& path, const WriteProgress& progress)
{
    QString reason;
    try {
        write(root, path, progress);
        return {};
    } catch (const WriteFailure& failure) {
        reason = failure.reason;
    } catch (const std::bad_alloc&) {
        reason = tr("it needs more memory than there is");
    } catch (const std::exception& failure) {
        reason = QString::fromUtf8(failure.what());
    }
    return tr("Cannot save \"%1\": %2.").arg(QDir::toNativeSeparators(path), reason);
}

bool canWriteScene(const QString& path)
{
    return isOwnFormat(path) || isGltf(path);
}

bool isOwnFormat(const QString& path)
{
    return suffixOf(path) == QLatin1String("kyrscene");
}

} // namespace editor
