#include "sibling_names.h"

#include "scene_object.h"

namespace editor {

namespace {

std::string withoutNumber(const std::string& name)
{
    const std::size_t end = name.find_last_not_of("0123456789");
    const bool isNumbered =
        end != std::string::npos && end > 0 && end + 1 < name.size() && name[end] == ' ';
    return isNumbered ? name.substr(0, end) : name;
}

} // namespace

SiblingNames::SiblingNames(const SceneObject& parent)
{
    for (const SceneObjectPtr& child : parent.children())
        m_taken.insert(child->name());
}

std::string SiblingNames::unique(const std::string& name)
{
    return m_taken.insert(name).second ? name : next(name);
}

std::string SiblingNames::next(const std::string& name)
{
    const std::string stem = withoutNumber(name);
    int& number = m_lastNumber.try_emplace(stem, 1).first->second;
    std::string free;
    do {
        free = stem + ' ' + std::to_string(++number);
    } while (!m_taken.insert(free).second);
    return free;
}

} // namespace editor
