#pragma once

#include <editor/app/path_dialog.h>

#include <editor/files/scene_saver.h>

namespace editor {

/// Writes the scene for other programs. Tells beforehand what the file will not carry; the scene
/// stays what it is, with its file and its unsaved changes.
class SceneExport final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool asking READ isAsking NOTIFY askingChanged)
    Q_PROPERTY(QStringList losses READ losses NOTIFY askingChanged)
    Q_PROPERTY(editor::SceneSaver* saver READ saver CONSTANT)

public:
    /// The document must outlive it.
    explicit SceneExport(SceneDocument& document, QObject* parent = nullptr);

    SceneSaver* saver() { return &m_saver; }

    /// Asks, when anything will be lost, and goes on as `chooseFile`.
    Q_INVOKABLE void begin();
    /// With a file dialog.
    Q_INVOKABLE void chooseFile();
    Q_INVOKABLE void giveUp();

    bool isAsking() const noexcept { return m_asking; }
    /// A line each.
    QStringList losses() const { return m_losses; }

Q_SIGNALS:
    void askingChanged();
    void exported(const QString& path);
    /// `reason` is one sentence that names the file.
    void failed(const QString& path, const QString& reason);

private:
    void setAsking(bool asking);

    SceneDocument& m_document;
    SceneSaver m_saver;
    PathDialog m_dialog;
    QStringList m_losses;
    bool m_asking = false;
};

} // namespace editor
