#pragma once

#include <editor/document/scene_document.h>

namespace editor {

class ViewportController;

/// How each file was left: which rows stood open and where the camera was. Remembered from one run
/// to the next for the files that were open last.
class SceneMemory final : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostScenes = 50;
    static constexpr int mostOpenRows = 5000;

    /// Both must outlive it.
    SceneMemory(SceneDocument& document, ViewportController& view, QObject* parent = nullptr);

    /// Remembers the open scene; does nothing for one without a file.
    void remember();
    /// Opens the rows of a scene that is about to be shown.
    static void restoreRows(SceneObject& root, const QString& path);
    /// Puts the camera where it was; false for a file that is not known.
    bool restoreCamera(const QString& path);

private:
    SceneDocument& m_document;
    ViewportController& m_view;
};

} // namespace editor
