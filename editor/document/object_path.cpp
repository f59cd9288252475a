#include "object_path.h"

#include "scene_object.h"

#include <charconv>
#include <vector>

namespace editor {

namespace {

struct Step
{
    std::string name;
    int occurrence = 1;
};

std::string stepText(const SceneObject& object)
{
    std::string text;
    for (const char c : object.name()) {
        if (c == '/' || c == '[' || c == '\\')
            text += '\\';
        text += c;
    }
    int occurrence = 1;
    for (const SceneObjectPtr& sibling : object.parent()->children()) {
        if (sibling.get() == &object)
            break;
        if (sibling->name() == object.name())
            ++occurrence;
    }
    return occurrence > 1 || text.empty() ? text + '[' + std::to_string(occurrence) + ']' : text;
}

// Takes the first step off the path; false when it is malformed.
bool takeStep(std::string_view& path, Step& step)
{
    std::size_t at = 0;
    for (; at < path.size() && path[at] != '/' && path[at] != '['; ++at) {
        if (path[at] == '\\' && ++at == path.size())
            return false;
        step.name += path[at];
    }
    if (at < path.size() && path[at] == '[') {
        const char* const end = path.data() + path.size();
        const auto [rest, error] = std::from_chars(path.data() + at + 1, end, step.occurrence);
        if (error != std::errc() || rest == end || *rest != ']')
            return false;
        at = std::size_t(rest - path.data()) + 1;
    }
    if (at < path.size() && path[at] != '/')
        return false;
    path.remove_prefix(at < path.size() ? at + 1 : at);
    return true;
}

SceneObject* childAt(const SceneObject& parent, const Step& step)
{
    int occurrence = 0;
    for (const SceneObjectPtr& child : parent.children()) {
        if (child->name() == step.name && ++occurrence == step.occurrence)
            return child.get();
    }
    return nullptr;
}

} // namespace

std::string objectPath(const SceneObject& object)
{
    std::vector<std::string> steps;
    for (const SceneObject* at = &object; at->parent(); at = at->parent())
        steps.push_back(stepText(*at));
    std::string path;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        if (!path.empty())
            path += '/';
        path += *step;
    }
    return path;
}

SceneObject* objectAtPath(SceneObject& root, std::string_view path)
{
    SceneObject* object = &root;
    while (object && !path.empty()) {
        Step step;
        object = takeStep(path, step) ? childAt(*object, step) : nullptr;
    }
    return object;
}

} // namespace editor
