#pragma once

#include <editor/document/new_object.h>
#include <editor/document/scene_document.h>
#include <host/scene/asset_selection.h>

#include <functional>

namespace editor {

class LongTask;
class ViewportController;

/// Commands that build the scene: adding, grouping, whole objects on the clipboard, selection sets.
/// One undo step each. Copying and pasting many objects goes on in the task when the command
/// returns.
class BuildCommands final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList selectionSets READ selectionSets NOTIFY selectionSetsChanged)

public:
    /// All must outlive it. `view` says where what is added goes.
    BuildCommands(SceneDocument& document, IAssetSelection& selection,
                  const ViewportController& view, LongTask& task, QObject* parent = nullptr);

    /// In the middle of the view; a camera takes the view's own place.
    void add(const NewObject& what);
    void group();
    void ungroup();

    /// The selected objects with all below them, as text in the editor's own file format.
    void copyObjects();
    void cutObjects();
    /// Objects that a file's text holds. What is on the clipboard is checked as files are.
    void pasteObjects();

    /// Their names.
    QStringList selectionSets() const;
    Q_INVOKABLE bool saveSelectionSet(const QString& name);
    Q_INVOKABLE void recallSelectionSet(int index);
    Q_INVOKABLE void removeSelectionSet(int index);

Q_SIGNALS:
    void selectionSetsChanged();
    /// What a command did, for the status line.
    void reported(const QString& text);

private:
    /// Calls `copied` when the objects are on the clipboard.
    void startCopy(const std::function<void()>& copied);

    SceneDocument& m_document;
    IAssetSelection& m_selection;
    const ViewportController& m_view;
    LongTask& m_task;
};

} // namespace editor
