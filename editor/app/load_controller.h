#pragma once

#include <editor/document/scene_document.h>
#include <editor/files/generated_scene.h>
#include <editor/files/scene_loader.h>
#include <editor/viewport/prepared_items.h>

namespace editor {

/// Opens files into the document. The open scene stays until the new one is complete, and when
/// there is none.
class LoadController final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
    Q_PROPERTY(QString fileName READ fileName NOTIFY loadingChanged)
    Q_PROPERTY(qreal progress READ progress NOTIFY progressChanged)

public:
    /// The document must outlive the controller.
    explicit LoadController(SceneDocument& document, QObject* parent = nullptr);

    bool isLoading() const noexcept { return m_loader.isLoading(); }
    QString fileName() const { return m_fileName; }
    /// From 0 to 1.
    qreal progress() const noexcept { return m_progress; }

    /// What is in this folder opens without a file, so that saving never overwrites it.
    void setSampleFolder(const QString& folder) { m_sampleFolder = folder; }
    void load(const QString& path);
    /// Opens a scene that has no file; the signals have an empty path.
    void generate(const SceneRecipe& recipe);
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void loadingChanged();
    void progressChanged();
    /// What the view shows of the scene, before `opening`; the receiver may take it.
    void itemsPrepared(const std::shared_ptr<editor::PreparedItems>& items);
    /// The free scene of a file, before it is the document's.
    void opening(editor::SceneObject* root, const QString& path);
    void loaded(const QString& path);
    /// Before `loaded`: the scene is not all that the file holds. Sentences without full stops.
    void incomplete(const QString& path, const QStringList& notes);
    /// `reason` is one sentence that names the file.
    void failed(const QString& path, const QString& reason);

private:
    struct Prepared;

    void load(const QString& path, SceneLoader::Reader read);
    void open(const QString& path, const QStringList& notes);
    void setProgress(qreal progress);

    SceneDocument& m_document;
    SceneLoader m_loader;
    // Of the load that is going on; its thread's until that has ended.
    std::shared_ptr<Prepared> m_prepared;
    QString m_fileName;
    QString m_sampleFolder;
    qreal m_progress = 0;
};

} // namespace editor
