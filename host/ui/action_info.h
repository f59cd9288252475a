#pragma once

#include <host/core/flags.h>

#include <memory>
#include <string>

namespace lumo {

/// Description of a command, shared by all actions made from it.
struct ActionInfo
{
    enum class Flag : unsigned
    {
        /// The command has an on and an off state.
        Checkable = 1u << 0,
    };

    std::string identifier;
    std::string text;
    std::string iconName;
    /// Portable key sequence, such as "Ctrl+E".
    std::string shortcut;
    /// Where command lists show it, from the outermost group inwards, separated by "/".
    std::string groupPath;
    std::string toolTip;
    vex::Flags<Flag> flags;

    static std::shared_ptr<const ActionInfo> create(std::string identifier, std::string text,
                                                    std::string iconName, std::string shortcut,
                                                    std::string groupPath, std::string toolTip,
                                                    vex::Flags<Flag> flags)
    {
        return std::make_shared<const ActionInfo>(
            ActionInfo{std::move(identifier), std::move(text), std::move(iconName),
                       std::move(shortcut), std::move(groupPath), std::move(toolTip), flags});
    }
};

} // namespace lumo
