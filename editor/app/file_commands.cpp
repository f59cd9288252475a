#include "file_commands.h"

#include "report.h"

#include <editor/files/scene_writer.h>

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace editor {

namespace {

QString loadFilter()
{
    return FileCommands::tr("Scenes (%1)").arg(SceneLoader::namePatterns().join(QLatin1Char(' ')));
}

void reportCanceled(const QString& path)
{
    reportNote(FileCommands::tr("Saving %1 was cancelled").arg(QDir::toNativeSeparators(path)));
}

} // namespace

FileCommands::FileCommands(SceneDocument& document, LoadController& loader, QObject* parent)
    : QObject(parent), m_document(document), m_loader(loader), m_saver(document)
{
    connect(&m_saver, &SceneSaver::saved, this, &FileCommands::finishSaving);
    connect(&m_saver, &SceneSaver::failed, this, &FileCommands::failSaving);
    connect(&m_saver, &SceneSaver::canceled, this, [this](const QString& path) {
        m_afterSaving = {};
        reportCanceled(path);
    });
    connect(&m_document, &SceneDocument::filePathChanged, this, [this] {
        const QString path = m_document.filePath();
        const FileStamp known = std::exchange(m_loading, {});
        forgetWaitingSave();
        m_watch.follow(path, known.exists() ? known : FileStamp::of(path));
    });
    connect(&m_loader, &LoadController::failed, this, [this] { m_loading = {}; });
    connect(&m_watch, &FileWatch::changed, this, [this] {
        // What is being written or read just now is looked at again when that is done.
        if (!m_saver.isSaving() && !m_loader.isLoading() && m_conflict == NoConflict)
            setConflict(FileChanged);
    });
}

FileCommands::~FileCommands() = default;

void FileCommands::newScene()
{
    unlessUnsaved([this] {
        m_loader.cancel();
        m_document.open(SceneObject::create(ObjectKind::Scene, "Scene"), {});
    });
}

void FileCommands::open()
{
    m_dialog.askToOpen(
        {tr("Open Scene"), {loadFilter(), tr("All files (*)")}, m_document.filePath(), {}},
        [this](const QString& path) { openFile(path); });
}

void FileCommands::openFile(const QString& path)
{
    if (!isOpen(path)) {
        unlessUnsaved([this, path] { load(path); });
        return;
    }
    m_watch.ask([this](bool isChanged) {
        if (isChanged)
            setConflict(FileChanged);
        else
            Q_EMIT reopened();
    });
}

bool FileCommands::isOpen(const QString& path) const
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return !canonical.isEmpty() &&
           canonical == QFileInfo(m_document.filePath()).canonicalFilePath();
}

void FileCommands::save()
{
    const QString path = m_document.filePath();
    if (!isOwnFormat(path)) {
        saveAs();
        return;
    }
    if (m_isComparing || m_saver.isSaving())
        return;
    m_isComparing = true;
    m_watch.ask([this, path](bool isChanged) {
        if (!m_isComparing)
            return; // cancelled
        finishComparing();
        if (isChanged)
            setConflict(SaveWaits);
        else
            saveTo(path);
    });
    if (m_isComparing)
        Q_EMIT comparingChanged();
}

void FileCommands::saveAs()
{
    m_dialog.askToWrite(
        {tr("Save Scene As"),
         {tr("Editor scene (*.kyrscene)")},
         m_document.filePath(),
         QFileInfo(m_document.filePath()).completeBaseName()},
        [this](const QString& path) {
            if (isOwnFormat(path))
                saveTo(path);
            else
                failSaving(path, tr("Cannot save \"%1\": scenes are saved as .kyrscene, and "
                                    "File > Export writes other formats.")
                                     .arg(QDir::toNativeSeparators(path)));
        },
        [this] { m_afterSaving = {}; });
}

void FileCommands::cancelSaving()
{
    if (!m_isComparing) {
        m_saver.cancel();
        return;
    }
    forgetWaitingSave();
    reportCanceled(m_document.filePath());
}

void FileCommands::quit()
{
    unlessUnsaved([this] { Q_EMIT quitConfirmed(); });
}

void FileCommands::markUnsaved(const QString& path, const FileStamp& known)
{
    m_loading = known;
    m_document.markUnsaved(path);
}

void FileCommands::saveAndContinue()
{
    m_afterSaving = std::exchange(m_afterConfirmation, {});
    Q_EMIT confirmingChanged();
    save();
}

void FileCommands::discardAndContinue()
{
    const Continuation continuation = std::exchange(m_afterConfirmation, {});
    Q_EMIT confirmingChanged();
    if (continuation)
        continuation();
}

void FileCommands::stay()
{
    setConfirmation({});
}

void FileCommands::reload()
{
    m_afterSaving = {};
    setConflict(NoConflict);
    load(m_document.filePath());
}

void FileCommands::keepMine()
{
    const bool saveWaits = m_conflict == SaveWaits;
    setConflict(NoConflict);
    finishComparing();
    m_watch.accept();
    if (saveWaits)
        saveTo(m_document.filePath());
}

void FileCommands::saveElsewhere()
{
    setConflict(NoConflict);
    saveAs();
}

void FileCommands::decideLater()
{
    m_afterSaving = {};
    setConflict(NoConflict);
}

void FileCommands::unlessUnsaved(Continuation continuation)
{
    if (m_saver.isSaving())
        m_afterSaving = std::move(continuation);
    else if (m_document.isModified())
        setConfirmation(std::move(continuation));
    else
        continuation();
}

void FileCommands::setConfirmation(Continuation continuation)
{
    m_afterConfirmation = std::move(continuation);
    Q_EMIT confirmingChanged();
}

void FileCommands::setConflict(Conflict conflict)
{
    if (m_conflict == conflict)
        return;
    m_conflict = conflict;
    Q_EMIT conflictChanged();
}

void FileCommands::finishComparing()
{
    if (std::exchange(m_isComparing, false))
        Q_EMIT comparingChanged();
}

void FileCommands::forgetWaitingSave()
{
    if (m_isComparing || m_conflict == SaveWaits)
        m_afterSaving = {};
    finishComparing();
    setConflict(NoConflict);
}

void FileCommands::load(const QString& path)
{
    m_loading = FileStamp::of(path);
    m_loader.load(path);
}

void FileCommands::saveTo(const QString& path)
{
    if (m_saver.isSaving())
        return;
    m_savedScene = m_document.sceneKey();
    m_saver.save(path);
}

void FileCommands::finishSaving(const QString& path, bool isCurrent)
{
    if (m_document.sceneKey() == m_savedScene) {
        if (isCurrent)
            m_document.markSaved(path);
        else
            m_document.markUnsaved(path);
        m_watch.follow(path, FileStamp::of(path));
    }
    reportNote(tr("Saved %1").arg(QDir::toNativeSeparators(path)));
    Q_EMIT saved(path);
    // What was edited meanwhile is not in the file.
    if (Continuation continuation = std::exchange(m_afterSaving, {}))
        unlessUnsaved(std::move(continuation));
}

void FileCommands::failSaving(const QString& path, const QString& reason)
{
    m_afterSaving = {};
    reportFailure(reason);
    Q_EMIT saveFailed(path, reason);
}

} // namespace editor
