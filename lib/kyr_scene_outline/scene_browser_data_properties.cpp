#include "scene_browser_data.h"

bool SceneBrowserData::copyProperties()
{
    return false;
}

bool SceneBrowserData::pasteProperties()
{
    return false;
}
