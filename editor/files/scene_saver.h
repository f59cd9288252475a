#pragma once

#include <editor/document/scene_document.h>
#include <editor/document/scene_snapshot.h>

#include <QObject>
#include <QTimer>

#include <memory>

class QThread;

namespace editor {

/// Writes the scene of a document to files, one at a time. The scene is copied in slices of the
/// event loop and written by a thread of its own, so that neither a large scene nor a slow disk
/// stops the window. Lives on the GUI thread. Each `save` ends in exactly one of `saved`, `failed`
/// and `canceled`.
class SceneSaver final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool saving READ isSaving NOTIFY savingChanged)
    Q_PROPERTY(qreal progress READ progress NOTIFY progressChanged)

public:
    /// The document must outlive the saver.
    explicit SceneSaver(SceneDocument& document, QObject* parent = nullptr);
    /// Cancels, and waits until the thread has noticed.
    ~SceneSaver() override;

    bool isSaving() const noexcept { return m_job != nullptr; }
    /// From 0 to 1.
    qreal progress() const noexcept { return m_progress; }
    /// Writes the scene as it is now, as `writeScene` does; when it is edited before it is copied,
    /// as it is after that, and cancelled when the document opens another. Does nothing while
    /// another file is being written.
    void save(const QString& path);
    /// The old file stays, unless the new one took its place already: then it counts as saved.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void savingChanged();
    void progressChanged();
    /// `isCurrent` when the document has not been edited since it was copied.
    void saved(const QString& path, bool isCurrent);
    /// `reason` is one sentence that names the file.
    void failed(const QString& path, const QString& reason);
    void canceled(const QString& path);

private:
    struct Job;

    void documentChanged(ChangeAspects aspects);
    void sceneGoes();
    void copySlice();
    void write();
    void run(Job& job);
    void finish();
    void setProgress(qreal progress);

    SceneDocument& m_document;
    QTimer m_copyTimer;
    std::unique_ptr<SceneSnapshot> m_snapshot;
    std::unique_ptr<Job> m_job;
    qreal m_progress = 0;
    bool m_isCurrent = true;
};

} // namespace editor
