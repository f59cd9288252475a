#pragma once

#include <QtGlobal>

#include <string>
#include <vector>

namespace editor {

/// A selection that was given a name, to be selected again.
struct SelectionSet
{
    std::string name;
    /// Of the objects in the order of their selection; those that are gone are left out.
    std::vector<quint32> ids;

    bool operator==(const SelectionSet& other) const
    {
        return name == other.name && ids == other.ids;
    }
};

using SelectionSets = std::vector<SelectionSet>;

} // namespace editor
