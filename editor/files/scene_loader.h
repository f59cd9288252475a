#pragma once

#include <editor/files/scene_import.h>

#include <QObject>

#include <memory>
#include <vector>

namespace editor {

/// Loads scene files in a thread of its own, one at a time. Lives on the GUI thread.
/// Each `load` ends in exactly one of `loaded`, `failed` and `canceled`.
class SceneLoader final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)

public:
    explicit SceneLoader(QObject* parent = nullptr);
    /// Cancels. A thread that does not notice within half a second is left to itself; it touches
    /// nothing of the loader.
    ~SceneLoader() override;

    bool isLoading() const noexcept { return m_job != nullptr; }
    /// Called in the thread.
    using Reader = std::function<SceneImport(const ImportProgress&)>;

    /// Cancels the file that is being loaded first.
    void load(const QString& path);
    /// A scene that comes from elsewhere; the signals have `path` as it is.
    void load(const QString& path, Reader read);
    /// Reports `canceled` at once; the thread winds up by itself.
    Q_INVOKABLE void cancel();

    /// Patterns for a file dialog, such as "*.gltf".
    static QStringList namePatterns();

Q_SIGNALS:
    void loadingChanged();
    /// From 0 to 1.
    void progressChanged(const QString& path, qreal progress);
    /// `notes` are sentences on what was left out or mended.
    void loaded(const editor::SceneObjectPtr& root, const QString& path, const QStringList& notes);
    /// `reason` is one sentence that names the file.
    void failed(const QString& path, const QString& reason);
    void canceled(const QString& path);

private:
    struct Job;

    static void run(const std::shared_ptr<Job>& job);
    void finish(const std::shared_ptr<Job>& job);

    std::shared_ptr<Job> m_job;
    // Those of canceled jobs included, as long as they run.
    std::vector<std::shared_ptr<Job>> m_running;
};

} // namespace editor
