#include "scene_import.h"

#include "import_process.h"
#include "kyrscene_reader.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <assimp/Importer.hpp>

#include <new>

namespace editor {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::SceneImport", text);
}

using Reader = SceneImport (*)(const QString& path, const ImportProgress& progress);

struct Format
{
    const char* suffix;
    Reader read;
};

// What the loader's thread reads itself; all else goes to the importer's process.
const Format ownFormats[] = {
    {"kyrscene", readKyrscene},
};

/// Null for a format that is none of ours.
Reader ownReaderOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix();
    for (const Format& format : ownFormats) {
        if (suffix.compare(QLatin1String(format.suffix), Qt::CaseInsensitive) == 0)
            return format.read;
    }
    return nullptr;
}

bool isForeignFormat(const QString& suffix)
{
    return !suffix.isEmpty() &&
           Assimp::Importer().IsExtensionSupported('.' + suffix.toLower().toStdString());
}

// What already speaks against the file before it is read.
QString objectionTo(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return tr("the file does not exist");
    if (file.isDir())
        return tr("it is a folder");
    if (!file.isFile())
        return tr("it is no regular file");
    if (!file.isReadable())
        return tr("no permission to read it");
    if (file.size() == 0)
        return tr("the file is empty");
    if (!ownReaderOf(path) && !isForeignFormat(file.suffix())) {
        return file.suffix().isEmpty() ? tr("a file without a suffix has no known format")
                                       : tr("\".%1\" is no known scene format").arg(file.suffix());
    }
    return {};
}

SceneImport refusal(const QString& path, QString reason)
{
    // Reasons of other libraries may be sentences already.
    while (reason.endsWith(QLatin1Char('.')) || reason.endsWith(QLatin1Char('!')))
        reason.chop(1);
    return {nullptr, tr("Cannot open \"%1\": %2.").arg(path, reason)};
}

} // namespace

SceneImport importScene(const QString& path, const ImportProgress& progress)
{
    const QString objection = objectionTo(path);
    if (!objection.isEmpty())
        return refusal(path, objection);
    const ImportProgress report = progress ? progress : [](double) { return true; };
    try {
        const Reader ownReader = ownReaderOf(path);
        SceneImport import = ownReader ? ownReader(path, report) : importInProcess(path, report);
        if (import.root && !ownReader)
            import.root->setName(QFileInfo(path).completeBaseName().toStdString());
        return import.error.isEmpty() ? import : refusal(path, import.error);
    } catch (const std::bad_alloc&) {
        return refusal(path, tr("it needs more memory than there is"));
    } catch (const std::exception& error) {
        return refusal(path, QString::fromUtf8(error.what()));
    }
}

QStringList importPatterns()
{
    std::string patterns;
    Assimp::Importer().GetExtensionList(patterns);
    QStringList own;
    for (const Format& format : ownFormats)
        own += QStringLiteral("*.") + QLatin1String(format.suffix);
    return own + QString::fromStdString(patterns).split(QLatin1Char(';'), Qt::SkipEmptyParts);
}

} // namespace editor
