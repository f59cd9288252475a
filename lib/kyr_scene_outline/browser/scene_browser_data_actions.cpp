#include <kyr_scene_outline/scene_browser_data.h>

#include <QPointer>

namespace {

using ActionInfoPointer = std::shared_ptr<const lumo::ActionInfo>;

ActionInfoPointer treeCommand(const char* identifier, const char* text)
{
    return lumo::ActionInfo::create(identifier, text, "", "", "Kelvane/Scene Browser", text, {});
}

const ActionInfoPointer expandAllInfo = treeCommand("scene_browser_expand_all", "Expand All");
const ActionInfoPointer collapseAllInfo = treeCommand("scene_browser_collapse_all", "Collapse All");

} // namespace

void SceneBrowserData::initActions()
{
    m_expandAllAction = std::make_unique<lumo::Action>(
        expandAllInfo, [this] { expandAll(); }, nullptr, nullptr, nullptr);
    m_collapseAllAction = std::make_unique<lumo::Action>(
        collapseAllInfo, [this] { collapseAll(); }, nullptr, nullptr, nullptr);
}

void SceneBrowserData::expandAll()
{
    Q_EMIT expandAllRequested();
}

void SceneBrowserData::collapseAll()
{
    Q_EMIT collapseAllRequested();
}

// Only the top level is asked: deeper rows lie under a top-level row that has children.
bool SceneBrowserData::checkExpandable() const
{
    const QAbstractItemModel* itemModel = model();
    if (!itemModel)
        return false;
    const int rows = itemModel->rowCount();
    for (int row = 0; row < rows; ++row) {
        if (itemModel->rowCount(itemModel->index(row, 0)) > 0)
            return true;
    }
    return false;
}

void SceneBrowserData::setPopupMenuProvider(std::shared_ptr<lumo::IPopupMenuProvider> provider)
{
    m_popupMenuProvider = std::move(provider);
}

void SceneBrowserData::requestMenu()
{
    // Keeps the menu's owner: what the shown menu starts may replace the provider.
    const std::shared_ptr<lumo::IPopupMenuProvider> provider = m_popupMenuProvider;
    if (!provider)
        return;
    const QPointer<SceneBrowserData> self(this);
    lumo::IPopupMenu* menu = provider->popupMenu();
    if (!self || !menu)
        return;
    const bool expandable = checkExpandable();
    if (self && expandable && !menu->isEmpty())
        menu->addSeparator();
    for (const auto action :
         {&SceneBrowserData::m_expandAllAction, &SceneBrowserData::m_collapseAllAction}) {
        if (self && expandable)
            menu->addAction((this->*action).get(), "");
    }
    if (self)
        menu->popup();
}
