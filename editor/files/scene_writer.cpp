#include "scene_writer.h"

#include "gltf_writer.h"
#include "kyrscene_writer.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

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

QByteArray contentOf(const SceneObject& root, const QString& suffix, QString& error)
{
    if (suffix == QLatin1String("kyrscene"))
        return toKyrscene(root);
    return toGltf(root, suffix == QLatin1String("glb"), error);
}

} // namespace

QString writeScene(const SceneObject& root, const QString& path)
{
    QString error;
    QByteArray content;
    try {
        if (canWriteScene(path))
            content = contentOf(root, suffixOf(path), error);
        else
            error = tr("\".%1\" is no format that can be written").arg(suffixOf(path));
    } catch (const std::exception& failure) {
        error = QString::fromUtf8(failure.what());
    }
    if (error.isEmpty()) {
        // Writes beside the file and takes its place at the end.
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(content);
            if (file.commit())
                return {};
        }
        error = file.errorString();
    }
    return tr("Cannot save \"%1\": %2.").arg(path, error);
}

bool canWriteScene(const QString& path)
{
    const QString suffix = suffixOf(path);
    return suffix == QLatin1String("kyrscene") || suffix == QLatin1String("gltf") ||
           suffix == QLatin1String("glb");
}

} // namespace editor
