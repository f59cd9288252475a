#pragma once

#include <editor/app/hidden_question.h>
#include <editor/app/long_task.h>
#include <editor/app/paste_special_model.h>

#include <editor/document/scene_document.h>
#include <host/scene/asset_selection.h>
#include <kyr_scene_outline/property_job.h>

class SceneBrowserData;

#include <functional>

namespace editor {

/// The Edit menu's commands on the selection, one undo step each. Copying and pasting properties
/// of many objects goes on in the task when the command returns.
class EditCommands final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(editor::PasteSpecialModel* pasteSpecialModel READ pasteSpecialModel CONSTANT)

public:
    /// All must outlive it.
    EditCommands(SceneDocument& document, IAssetSelection& selection, SceneBrowserData& browser,
                 HiddenQuestion& hidden, LongTask& task, QObject* parent = nullptr);

    PasteSpecialModel* pasteSpecialModel() noexcept { return &m_pasteSpecial; }

    void selectAll();
    void invertSelection();
    void selectChildren();
    void selectParents();
    void selectSameType();
    void selectNone();
    void removeSelected();
    void duplicateSelected();
    void setSelectedHidden(bool hidden);
    void setSelectedLocked(bool locked);
    void copyProperties();
    /// What the choice made last in Paste Special says.
    void pasteProperties();
    /// Copies or pastes the property or group at a path, such as "light".
    Q_INVOKABLE void copyPart(const QString& path);
    Q_INVOKABLE void pastePart(const QString& path);
    /// Counts what the clipboard holds into `pasteSpecialModel`, then `pasteSpecialReady`.
    void preparePasteSpecial();
    /// Pastes what is chosen there, and remembers the choice.
    Q_INVOKABLE void pasteSpecial();

Q_SIGNALS:
    /// What a command did, for the status line.
    void reported(const QString& text);
    void pasteSpecialReady();

private:
    void startCopy(PropertyChoice choice);
    void startPaste(PropertyChoice choice);
    void pasteOntoSelected(const PropertyChoice& choice);
    void run(const QString& name, std::unique_ptr<PropertyJob> job,
             std::function<void(const PropertyPasteReport&)> succeeded);
    void forgetUndonePaste(int index);

    SceneDocument& m_document;
    IAssetSelection& m_selection;
    SceneBrowserData& m_browser;
    HiddenQuestion& m_hidden;
    LongTask& m_task;
    PasteChoice m_choice;
    PasteSpecialModel m_pasteSpecial;
    /// Index of the undo stack behind the paste that was reported last.
    int m_reportedStep = 0;
};

} // namespace editor
