#pragma once

#include "property_task.h"

#include <editor/document/scene_document.h>
#include <host/scene/asset_selection.h>

class SceneBrowserData;

#include <functional>

namespace editor {

/// The Edit menu's commands on the selection, one undo step each. Copying and pasting properties
/// of many objects goes on in `task` when the command returns.
class EditCommands final : public QObject
{
    Q_OBJECT
    /// How many of the selected objects a filter hides.
    Q_PROPERTY(int hiddenCount MEMBER m_hiddenCount NOTIFY hiddenCountChanged)

public:
    /// All must outlive it.
    EditCommands(SceneDocument& document, IAssetSelection& selection, SceneBrowserData& browser,
                 QObject* parent = nullptr);

    PropertyTask& task() noexcept { return m_task; }

    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void invertSelection();
    Q_INVOKABLE void selectChildren();
    Q_INVOKABLE void selectNone();
    Q_INVOKABLE void removeSelected();
    /// Goes on with the command that `hiddenConcerned` told of.
    Q_INVOKABLE void proceed();
    Q_INVOKABLE void duplicateSelected();
    Q_INVOKABLE void copyProperties();
    Q_INVOKABLE void pasteProperties();

Q_SIGNALS:
    /// What a command did, for the status line.
    void reported(const QString& text);
    void hiddenCountChanged();
    /// A command waits for `proceed`, because it would act on objects that the tree hides.
    void hiddenConcerned(const QString& command, int hidden);

private:
    void pasteOntoSelected();
    void ask(const QString& command, const std::function<void()>& action);

    int m_hiddenCount = 0;
    std::function<void()> m_waiting;
    SceneDocument& m_document;
    IAssetSelection& m_selection;
    SceneBrowserData& m_browser;
    PropertyTask m_task;
};

} // namespace editor
