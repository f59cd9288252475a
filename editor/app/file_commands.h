#pragma once

#include <editor/app/file_watch.h>
#include <editor/app/load_controller.h>
#include <editor/app/path_dialog.h>

#include <editor/files/scene_saver.h>

#include <QUrl>

#include <functional>

namespace editor {

/// The File menu: opening, saving, and asking before anything is lost, here or in the file.
class FileCommands final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool confirming READ isConfirming NOTIFY confirmingChanged)
    Q_PROPERTY(Conflict conflict READ conflict NOTIFY conflictChanged)
    Q_PROPERTY(bool comparing READ isComparing NOTIFY comparingChanged)
    Q_PROPERTY(editor::SceneSaver* saver READ saver CONSTANT)

public:
    /// The open scene's file was changed by somebody else.
    enum Conflict
    {
        NoConflict,
        FileChanged,
        /// The same, and a save waits for the answer.
        SaveWaits,
    };
    Q_ENUM(Conflict)

    /// Document and loader must outlive it.
    FileCommands(SceneDocument& document, LoadController& loader, QObject* parent = nullptr);
    ~FileCommands() override;

    SceneSaver* saver() { return &m_saver; }
    /// The open scene's file as it was read or written last.
    const FileStamp& knownFile() const { return m_watch.known(); }

    /// An empty scene without a file.
    void newScene();
    /// With a file dialog.
    Q_INVOKABLE void open();
    /// The open scene's own file is not read again: `reopened` tells of it, unless somebody else
    /// changed the file, which `conflict` asks about.
    Q_INVOKABLE void openFile(const QString& path);
    Q_INVOKABLE void openUrl(const QUrl& url) { openFile(url.toLocalFile()); }
    /// Goes on as `saveAs` for a scene that has no file in the own format, imported ones included.
    Q_INVOKABLE void save();
    Q_INVOKABLE void saveAs();
    /// A save waits until the file, which was touched, is compared with what was read of it.
    bool isComparing() const noexcept { return m_isComparing; }
    /// Also while it waits for that.
    Q_INVOKABLE void cancelSaving();
    Q_INVOKABLE void quit();
    /// The open scene is unsaved changes of a file that was in the state `known`.
    void markUnsaved(const QString& path, const FileStamp& known);

    // Answers to the question that `confirming` asks.
    bool isConfirming() const { return bool(m_afterConfirmation); }
    Q_INVOKABLE void saveAndContinue();
    Q_INVOKABLE void discardAndContinue();
    Q_INVOKABLE void stay();

    // Answers to the question that `conflict` asks.
    Conflict conflict() const noexcept { return m_conflict; }
    /// Loses unsaved changes.
    Q_INVOKABLE void reload();
    /// The file's new contents are replaced by the next save, or by the one that waits.
    Q_INVOKABLE void keepMine();
    Q_INVOKABLE void saveElsewhere();
    /// The next save asks again.
    Q_INVOKABLE void decideLater();

Q_SIGNALS:
    void reopened();
    void confirmingChanged();
    void conflictChanged();
    void comparingChanged();
    void saved(const QString& path);
    /// `reason` is one sentence that names the file.
    void saveFailed(const QString& path, const QString& reason);
    void quitConfirmed();

private:
    using Continuation = std::function<void()>;

    bool isOpen(const QString& path) const;
    void unlessUnsaved(Continuation continuation);
    void setConfirmation(Continuation continuation);
    void setConflict(Conflict conflict);
    void finishComparing();
    void forgetWaitingSave();
    void load(const QString& path);
    void saveTo(const QString& path);
    void finishSaving(const QString& path, bool isCurrent);
    void failSaving(const QString& path, const QString& reason);

    SceneDocument& m_document;
    LoadController& m_loader;
    SceneSaver m_saver;
    FileWatch m_watch;
    PathDialog m_dialog;
    /// Of the file that the document is about to take, from before it was read.
    FileStamp m_loading;
    /// That which was written, or is.
    QUuid m_savedScene;
    Continuation m_afterConfirmation;
    Continuation m_afterSaving;
    Conflict m_conflict = NoConflict;
    bool m_isComparing = false;
};

} // namespace editor
