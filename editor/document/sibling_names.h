#pragma once

#include <map>
#include <set>
#include <string>

namespace editor {

class SceneObject;

/// Finds names that no child of one parent has yet. O(n log n) in the children, once, whatever
/// the names: nothing depends on a hash.
class SiblingNames
{
public:
    explicit SiblingNames(const SceneObject& parent);

    /// `name` itself, or numbered as by `next` when a child has it. Takes the name.
    std::string unique(const std::string& name);
    /// `name` with the next free number behind it: "Lamp", "Lamp 2", "Lamp 3". Takes the name.
    std::string next(const std::string& name);

private:
    std::set<std::string> m_taken;
    std::map<std::string, int> m_lastNumber;
};

} // namespace editor
