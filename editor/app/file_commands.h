#pragma once

#include "load_controller.h"

#include <QUrl>

#include <functional>
#include <memory>

class QFileDialog;

namespace editor {

/// The File menu: opening, saving, and asking before unsaved changes are lost.
class FileCommands final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool confirming READ isConfirming NOTIFY confirmingChanged)

public:
    /// Document and loader must outlive it.
    FileCommands(SceneDocument& document, LoadController& loader, QObject* parent = nullptr);
    ~FileCommands() override;

    /// With a file dialog.
    Q_INVOKABLE void open();
    Q_INVOKABLE void openFile(const QString& path);
    Q_INVOKABLE void openUrl(const QUrl& url) { openFile(url.toLocalFile()); }
    /// Falls back on `saveAs` for a scene whose format cannot be written.
    Q_INVOKABLE void save();
    Q_INVOKABLE void saveAs();
    Q_INVOKABLE void quit();

    // Answers to the question that `confirming` asks.
    bool isConfirming() const { return bool(m_afterConfirmation); }
    Q_INVOKABLE void saveAndContinue();
    Q_INVOKABLE void discardAndContinue();
    Q_INVOKABLE void stay();

Q_SIGNALS:
    void confirmingChanged();
    void saved(const QString& path);
    /// `reason` is one sentence that names the file.
    void saveFailed(const QString& path, const QString& reason);
    void quitConfirmed();

private:
    using Continuation = std::function<void()>;

    void unlessUnsaved(Continuation continuation);
    void setConfirmation(Continuation continuation);
    void saveTo(const QString& path);
    void askForPath(std::unique_ptr<QFileDialog> dialog,
                    std::function<void(const QString&)> chosen);

    SceneDocument& m_document;
    LoadController& m_loader;
    Continuation m_afterConfirmation;
    Continuation m_afterSaving;
    std::unique_ptr<QFileDialog> m_dialog;
};

} // namespace editor
