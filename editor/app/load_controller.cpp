#include "load_controller.h"

#include "report.h"
#include "viewport_items.h"

#include <QDir>
#include <QFileInfo>

#include <new>

namespace editor {

struct LoadController::Prepared
{
    PreparedScene scene;
    PreparedItems items;
};

LoadController::LoadController(SceneDocument& document, QObject* parent)
    : QObject(parent), m_document(document)
{
    connect(&m_loader, &SceneLoader::loadingChanged, this, &LoadController::loadingChanged);
    connect(&m_loader, &SceneLoader::progressChanged, this,
            [this](const QString&, qreal progress) { setProgress(progress); });
    connect(&m_loader, &SceneLoader::loaded, this,
            [this](const SceneObjectPtr&, const QString& path, const QStringList& notes) {
                open(path, notes);
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

void LoadController::open(const QString& path, const QStringList& notes)
{
    Prepared prepared = std::move(*std::exchange(m_prepared, nullptr));
    Q_EMIT itemsPrepared(std::make_shared<PreparedItems>(std::move(prepared.items)));
    Q_EMIT opening(prepared.scene.root.get(), path);
    const bool isSample = QFileInfo(path).path() == m_sampleFolder;
    m_document.open(std::move(prepared.scene), isSample ? QString() : path);
    reportNote(tr("Opened %1, objects: %2").arg(m_fileName).arg(m_document.objectCount()));
    for (const QString& note : notes)
        reportWarning(tr("%1: %2.").arg(m_fileName, note));
    if (!notes.isEmpty())
        Q_EMIT incomplete(path, notes);
    Q_EMIT loaded(path);
}

void LoadController::load(const QString& path)
{
    const QString absolutePath = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    m_fileName = QFileInfo(absolutePath).fileName();
    setProgress(0);
    load(absolutePath, [absolutePath](const ImportProgress& progress) {
        return importScene(absolutePath, progress);
    });
}

void LoadController::generate(const SceneRecipe& recipe)
{
    m_fileName = titleOf(recipe);
    setProgress(0);
    load({}, [recipe](const ImportProgress& progress) { return generateScene(recipe, progress); });
}

void LoadController::load(const QString& path, SceneLoader::Reader read)
{
    const QString noMemory =
        tr("Cannot open \"%1\": it needs more memory than there is.").arg(m_fileName);
    m_loader.cancel();
    m_prepared = std::make_shared<Prepared>();
    m_loader.load(path,
                  [read = std::move(read), prepared = m_prepared,
                   noMemory](const ImportProgress& progress) -> SceneImport {
                      SceneImport import = read(progress);
                      if (!import.root)
                          return import;
                      try {
                          prepared->scene = PreparedScene::from(import.root);
                          if (!progress(1))
                              return {};
                          prepared->items = PreparedItems::from(viewportItems(*import.root));
                      } catch (const std::bad_alloc&) {
                          return {nullptr, noMemory};
                      }
                      return import;
                  });
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
