#include "edit_commands.h"

#include "selection_edits.h"

#include <editor/document/scene_commands.h>
#include <kyr_scene_outline/scene_browser_data.h>

#include <utility>

namespace editor {

namespace {

QString pasteSummary(const PropertyPasteReport& report)
{
    QString text = EditCommands::tr("%1 properties of %2 objects changed")
                       .arg(report.changedProperties)
                       .arg(report.changedObjects);
    if (report.unmatched > 0)
        text += EditCommands::tr("; no match for %1 values").arg(report.unmatched);
    if (report.typeMismatches > 0)
        text += EditCommands::tr("; another type in %1").arg(report.typeMismatches);
    if (report.refused > 0)
        text += EditCommands::tr("; %1 refused").arg(report.refused);
    return text;
}

} // namespace

EditCommands::EditCommands(SceneDocument& document, IAssetSelection& selection,
                           SceneBrowserData& browser, QObject* parent)
    : QObject(parent), m_document(document), m_selection(selection), m_browser(browser)
{
    // What is pasted must be taken back while the objects are still there.
    connect(&m_document, &SceneDocument::aboutToReset, &m_task, &PropertyTask::cancel);
    // Drawing the scene again and again would take longer than the paste.
    connect(&m_task, &PropertyTask::runningChanged, this,
            [this] { m_document.setTellsOnlyWholeSteps(m_task.isRunning()); });
    connect(&m_document, &SceneDocument::refused, this, &EditCommands::reported);
    connect(&m_task, &PropertyTask::canceled, this,
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

void EditCommands::selectNone()
{
    setAssetSelection(m_selection, {});
}

void EditCommands::ask(const QString& command, const std::function<void()>& action)
{
    m_waiting = action;
    if (m_hiddenCount > 0)
        Q_EMIT hiddenConcerned(command, m_hiddenCount);
    else
        proceed();
}

void EditCommands::proceed()
{
    if (const std::function<void()> action = std::exchange(m_waiting, nullptr))
        action();
}

void EditCommands::removeSelected()
{
    ask(tr("Delete"), [this] { editor::removeSelected(m_document, m_selection); });
}

void EditCommands::duplicateSelected()
{
    ask(tr("Duplicate"), [this] { editor::duplicateSelected(m_document, m_selection); });
}

void EditCommands::copyProperties()
{
    if (m_task.isRunning())
        return;
    const auto report = [this](bool ok) {
        Q_EMIT reported(ok ? tr("Properties copied")
                           : tr("Properties were not copied; the log says why"));
    };
    std::unique_ptr<PropertyJob> job = m_browser.startCopy();
    if (!job) {
        report(false);
        return;
    }
    const PropertyJob& copy = *job;
    m_task.start(tr("Copying properties"), std::move(job),
                 [report, &copy] { report(copy.hasSucceeded()); });
}

void EditCommands::pasteProperties()
{
    ask(tr("Paste Properties"), [this] { pasteOntoSelected(); });
}

void EditCommands::pasteOntoSelected()
{
    if (m_task.isRunning())
        return;
    const QString failure = tr("Properties were not pasted; the log says why");
    std::unique_ptr<PropertyPasteJob> job = m_browser.startPaste();
    if (!job) {
        Q_EMIT reported(failure);
        return;
    }
    const PropertyPasteJob& paste = *job;
    m_task.start(tr("Pasting properties"), std::move(job), [this, failure, &paste] {
        const QString summary = paste.hasSucceeded() ? pasteSummary(paste.report()) : failure;
        const QString locked = m_document.takeRefusal();
        Q_EMIT reported(locked.isEmpty() ? summary : tr("%1; %2").arg(summary, locked));
    });
}

} // namespace editor
