#include "edit_commands.h"

#include "paste_summary.h"
#include "selection_edits.h"

#include <editor/document/scene_commands.h>
#include <kyr_scene_outline/scene_browser_data.h>

#include <utility>

namespace editor {

namespace {

class PropertySlices final : public SlicedJob
{
public:
    explicit PropertySlices(std::unique_ptr<PropertyJob> job) : m_job(std::move(job)) {}

    bool advance(std::chrono::nanoseconds time) override { return m_job->advance(time); }
    double progress() const override { return m_job->progress(); }

private:
    std::unique_ptr<PropertyJob> m_job;
};

} // namespace

EditCommands::EditCommands(SceneDocument& document, IAssetSelection& selection,
                           SceneBrowserData& browser, HiddenQuestion& hidden, LongTask& task,
                           QObject* parent)
    : QObject(parent)
    , m_document(document)
    , m_selection(selection)
    , m_browser(browser)
    , m_hidden(hidden)
    , m_task(task)
{
    // What is pasted must be taken back while the objects are still there.
    connect(&m_document, &SceneDocument::aboutToReset, &m_task, &LongTask::cancel);
    // Drawing the scene again and again would take longer than the paste.
    connect(&m_task, &LongTask::runningChanged, this,
            [this] { m_document.setTellsOnlyWholeSteps(m_task.isRunning()); });
    connect(&m_document, &SceneDocument::refused, this, &EditCommands::reported);
    connect(&m_document.undoStack(), &QUndoStack::indexChanged, this,
            &EditCommands::forgetUndonePaste);
    connect(&m_task, &LongTask::failed, this, [this](const QString& name, const QString& why) {
        Q_EMIT reported(tr("%1 failed, and nothing was changed: %2").arg(name, why));
    });
    connect(&m_task, &LongTask::canceled, this,
            [this](const QString& name) { Q_EMIT reported(tr("%1 was cancelled").arg(name)); });
}

void EditCommands::selectAll()
{
    m_browser.selectAll();
}

void EditCommands::invertSelection()
{
    setAssetSelection(m_selection, inverted(m_document, m_selection));
}

void EditCommands::selectChildren()
{
    IAssetSelection::Objects children = childrenOfSelected(m_document, m_selection);
    if (!children.empty())
        setAssetSelection(m_selection, std::move(children));
}

void EditCommands::selectParents()
{
    IAssetSelection::Objects parents = parentsOfSelected(m_document, m_selection);
    if (!parents.empty())
        setAssetSelection(m_selection, std::move(parents));
}

void EditCommands::selectSameType()
{
    setAssetSelection(m_selection, sameTypeAsSelected(m_document, m_selection));
}

void EditCommands::selectNone()
{
    setAssetSelection(m_selection, {});
}

void EditCommands::removeSelected()
{
    editor::removeSelected(m_document, m_selection);
}

void EditCommands::duplicateSelected()
{
    editor::duplicateSelected(m_document, m_selection);
}

void EditCommands::setSelectedHidden(bool hidden)
{
    editor::setSelectedFlag(m_document, m_selection, "visible", !hidden, hidden ? "Hide" : "Show");
}

void EditCommands::setSelectedLocked(bool locked)
{
    editor::setSelectedFlag(m_document, m_selection, "locked", locked, locked ? "Lock" : "Unlock");
}

void EditCommands::copyProperties()
{
    startCopy({});
}

void EditCommands::copyPart(const QString& path)
{
    startCopy(partChoice(path.toStdString()));
}

void EditCommands::startCopy(PropertyChoice choice)
{
    if (m_task.isRunning())
        return;
    const auto report = [this](bool ok) {
        Q_EMIT reported(ok ? tr("Properties copied")
                           : tr("Properties were not copied; the log says why"));
    };
    std::unique_ptr<PropertyJob> job = m_browser.startCopy(std::move(choice));
    if (!job) {
        report(false);
        return;
    }
    const PropertyJob& copy = *job;
    m_task.start(tr("Copying properties"), std::make_unique<PropertySlices>(std::move(job)),
                 [report, &copy] { report(copy.hasSucceeded()); });
}

void EditCommands::pasteProperties()
{
    startPaste(m_choice.asFunction());
}

void EditCommands::pastePart(const QString& path)
{
    startPaste(partChoice(path.toStdString()));
}

void EditCommands::startPaste(PropertyChoice choice)
{
    m_hidden.ask(tr("Paste Properties"),
                 [this, choice = std::move(choice)] { pasteOntoSelected(choice); });
}

void EditCommands::pasteOntoSelected(const PropertyChoice& choice)
{
    if (m_task.isRunning())
        return;
    run(tr("Pasting properties"), m_browser.startPaste(choice),
        [this](const PropertyPasteReport& report) {
            const QString locked = m_document.takeRefusal();
            const QString summary = pasteSummary(report);
            m_reportedStep = report.changedProperties > 0 ? m_document.undoStack().index() : 0;
            Q_EMIT reported(locked.isEmpty() ? summary : tr("%1; %2").arg(summary, locked));
        });
}

void EditCommands::preparePasteSpecial()
{
    if (m_task.isRunning())
        return;
    run(tr("Reading the clipboard"), m_browser.startPastePreview(),
        [this](const PropertyPasteReport& report) {
            m_pasteSpecial.show(report, m_choice);
            Q_EMIT pasteSpecialReady();
        });
}

void EditCommands::pasteSpecial()
{
    m_pasteSpecial.storeTo(m_choice);
    m_choice.save();
    pasteProperties();
}

void EditCommands::run(const QString& name, std::unique_ptr<PropertyJob> job,
                       std::function<void(const PropertyPasteReport&)> succeeded)
{
    if (!job) {
        Q_EMIT reported(whyNothingPasted());
        return;
    }
    const PropertyJob& running = *job;
    auto slices = std::make_unique<PropertySlices>(std::move(job));
    m_task.start(name, std::move(slices), [this, succeeded = std::move(succeeded), &running] {
        if (running.hasSucceeded())
            succeeded(running.report());
        else
            Q_EMIT reported(whyNothingPasted());
    });
}

// What a paste could not do is of no interest once the paste is gone.
void EditCommands::forgetUndonePaste(int index)
{
    if (index < m_reportedStep) {
        m_reportedStep = 0;
        Q_EMIT reported(QString());
    }
}

} // namespace editor
