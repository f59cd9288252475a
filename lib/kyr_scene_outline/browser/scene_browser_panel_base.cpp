#include <kyr_scene_outline/scene_browser_panel_base.h>

SceneBrowserPanelBase::SceneBrowserPanelBase() = default;
SceneBrowserPanelBase::~SceneBrowserPanelBase() = default;

QQmlComponent* SceneBrowserPanelBase::getComponent()
{
    return nullptr;
}

QObject* SceneBrowserPanelBase::getContext()
{
    return nullptr;
}
