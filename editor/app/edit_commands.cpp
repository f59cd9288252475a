#include "edit_commands.h"

#include "selection_edits.h"

#include <editor/scene/scene_commands.h>
#include <kyr_scene_outline/scene_browser_data.h>

namespace editor {

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
    if (!m_browser.pasteProperties())
        Q_EMIT reported(tr("Properties were not pasted; the log says why"));
}

} // namespace editor
