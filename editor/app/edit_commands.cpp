#include "edit_commands.h"

#include "selection_edits.h"

#include <editor/scene/scene_commands.h>
#include <kyr_scene_outline/scene_browser_data.h>

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
{}

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

void EditCommands::removeSelected()
{
    editor::removeSelected(m_document, m_selection);
}

void EditCommands::duplicateSelected()
{
    editor::duplicateSelected(m_document, m_selection);
}

void EditCommands::copyProperties()
{
    Q_EMIT reported(m_browser.copyProperties()
                        ? tr("Properties copied")
                        : tr("Properties were not copied; the log says why"));
}

void EditCommands::pasteProperties()
{
    Q_EMIT reported(m_browser.pasteProperties()
                        ? pasteSummary(m_browser.lastPasteReport())
                        : tr("Properties were not pasted; the log says why"));
}

} // namespace editor
