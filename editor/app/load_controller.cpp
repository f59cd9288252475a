#include "load_controller.h"

#include "report.h"

#include <QDir>
#include <QFileInfo>

namespace editor {

LoadController::LoadController(SceneDocument& document, QObject* parent)
    : QObject(parent), m_document(document)
{
    connect(&m_loader, &SceneLoader::loadingChanged, this, &LoadController::loadingChanged);
    connect(&m_loader, &SceneLoader::progressChanged, this,
            [this](const QString&, qreal progress) { setProgress(progress); });
    connect(&m_loader, &SceneLoader::loaded, this,
            [this](const SceneObjectPtr& root, const QString& path, const QStringList& notes) {
                Q_EMIT opening(root.get(), path);
                const bool isSample = QFileInfo(path).path() == m_sampleFolder;
                m_document.open(root, isSample ? QString() : path);
                reportNote(
                    tr("Opened %1, objects: %2").arg(m_fileName).arg(m_document.objectCount()));
                for (const QString& note : notes)
                    reportWarning(tr("%1: %2.").arg(m_fileName, note));
                if (!notes.isEmpty())
                    Q_EMIT incomplete(path, notes);
                Q_EMIT loaded(path);
            });
    connect(&m_loader, &SceneLoader::failed, this,
            [this](const QString& path, const QString& reason) {
                reportFailure(reason);
                Q_EMIT failed(path, reason);
            });
    connect(&m_loader, &SceneLoader::canceled, this, [this](const QString& path) {
        reportNote(tr("Opening %1 was cancelled")
                       .arg(path.isEmpty() ? m_fileName : QDir::toNativeSeparators(path)));
    });
}

void LoadController::load(const QString& path)
{
    const QString absolutePath = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    m_fileName = QFileInfo(absolutePath).fileName();
    setProgress(0);
    m_loader.load(absolutePath);
}

void LoadController::generate(const SceneRecipe& recipe)
{
    m_fileName = titleOf(recipe);
    setProgress(0);
    m_loader.load(
        {}, [recipe](const ImportProgress& progress) { return generateScene(recipe, progress); });
}

void LoadController::cancel()
{
    m_loader.cancel();
}

void LoadController::setProgress(qreal progress)
{
    if (m_progress == progress)
        return;
    m_progress = progress;
    Q_EMIT progressChanged();
}

} // namespace editor
