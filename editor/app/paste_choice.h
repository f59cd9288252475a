#pragma once

#include <kyr_scene_outline/property_job.h>

#include <memory>
#include <set>
#include <string>

namespace editor {

/// Which properties a paste takes: what the user chose last, at first everything but the transform,
/// so that several objects do not end up in one place. Kept in the user's settings.
class PasteChoice
{
public:
    PasteChoice();

    bool takes(const std::string& path) const { return m_leftOut.count(path) == 0; }
    void set(const std::string& path, bool taken);
    void save() const;
    /// As of now.
    PropertyChoice asFunction() const;

private:
    std::set<std::string> m_leftOut;
};

/// The property or group at a path, with all that is below it.
PropertyChoice partChoice(const std::string& path);

} // namespace editor
