#pragma once

#include <editor/document/scene_document.h>

namespace editor {

/// What a step is called that does something to these objects: "Delete Lamp", "Delete 3 objects".
inline std::string stepName(const char* verb, const SceneObjects& objects)
{
    if (objects.size() == 1)
        return std::string(verb) + ' ' + objects.front()->name();
    return std::string(verb) + ' ' + std::to_string(objects.size()) + " objects";
}

} // namespace editor
