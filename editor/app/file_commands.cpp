#include "file_commands.h"

#include "report.h"

#include <editor/files/scene_writer.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QWindow>

#include <utility>

namespace editor {

namespace {

QStringList openFilters()
{
    return {FileCommands::tr("Scenes (%1)").arg(SceneLoader::namePatterns().join(QLatin1Char(' '))),
            FileCommands::tr("All files (*)")};
}

QStringList saveFilters()
{
    return {FileCommands::tr("Editor scene (*.kyrscene)"), FileCommands::tr("glTF 2 (*.gltf)"),
            FileCommands::tr("Binary glTF 2 (*.glb)")};
}

} // namespace

FileCommands::FileCommands(SceneDocument& document, LoadController& loader, QObject* parent)
    : QObject(parent), m_document(document), m_loader(loader)
{}

FileCommands::~FileCommands() = default;

void FileCommands::open()
{
    auto dialog = std::make_unique<QFileDialog>();
    dialog->setWindowTitle(tr("Open Scene"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters(openFilters());
    askForPath(std::move(dialog), [this](const QString& path) { openFile(path); });
}

void FileCommands::openFile(const QString& path)
{
    unlessUnsaved([this, path] { m_loader.load(path); });
}

void FileCommands::save()
{
    if (canWriteScene(m_document.filePath()))
        saveTo(m_document.filePath());
    else
        saveAs();
}

void FileCommands::saveAs()
{
    auto dialog = std::make_unique<QFileDialog>();
    dialog->setWindowTitle(tr("Save Scene As"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilters(saveFilters());
    dialog->setDefaultSuffix(QStringLiteral("kyrscene"));
    connect(dialog.get(), &QFileDialog::filterSelected, dialog.get(),
            [dialog = dialog.get()](const QString& filter) {
                const int begin = filter.indexOf(QLatin1String("*.")) + 2;
                dialog->setDefaultSuffix(filter.mid(begin, filter.length() - begin - 1));
            });
    const QFileInfo file(m_document.filePath());
    if (!m_document.filePath().isEmpty())
        dialog->selectFile(file.completeBaseName());
    askForPath(std::move(dialog), [this](const QString& path) { saveTo(path); });
}

void FileCommands::quit()
{
    unlessUnsaved([this] { Q_EMIT quitConfirmed(); });
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

void FileCommands::unlessUnsaved(Continuation continuation)
{
    if (m_document.isModified())
        setConfirmation(std::move(continuation));
    else
        continuation();
}

void FileCommands::setConfirmation(Continuation continuation)
{
    m_afterConfirmation = std::move(continuation);
    Q_EMIT confirmingChanged();
}

void FileCommands::saveTo(const QString& path)
{
    const Continuation continuation = std::exchange(m_afterSaving, {});
    const QString error = writeScene(*m_document.root(), path);
    if (!error.isEmpty()) {
        reportFailure(error);
        Q_EMIT saveFailed(path, error);
        return;
    }
    m_document.markSaved(path);
    reportNote(tr("Saved %1").arg(QDir::toNativeSeparators(path)));
    Q_EMIT saved(path);
    if (continuation)
        continuation();
}

void FileCommands::askForPath(std::unique_ptr<QFileDialog> dialog,
                              std::function<void(const QString&)> chosen)
{
    m_dialog = std::move(dialog);
    if (!m_document.filePath().isEmpty())
        m_dialog->setDirectory(QFileInfo(m_document.filePath()).absolutePath());
    connect(m_dialog.get(), &QFileDialog::fileSelected, this, chosen);
    connect(m_dialog.get(), &QFileDialog::rejected, this, [this] { m_afterSaving = {}; });
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->winId(); // makes the window that the next line needs
    m_dialog->windowHandle()->setTransientParent(QGuiApplication::focusWindow());
    m_dialog->show();
}

} // namespace editor
