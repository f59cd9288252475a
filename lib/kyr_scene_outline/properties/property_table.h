#pragma once

#include <host/data_section/data_section.h>
#include <host/variant/variant.h>
#include <kyr_scene_outline/property_job.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kyr::properties {

/// What a "property" section says, and what became of it.
struct StoredProperty
{
    std::string path;
    std::string type;
    /// A string.
    lumo::Variant value{std::string()};
    PropertyPasteCounts counts;
    /// Of several properties with one path only the first counts.
    bool isFirst = false;
    bool isChosen = true;
};

/// The properties of one stored object by path. The sections are read once, whatever number of
/// objects the table is applied to.
///
/// Objects of one type store the same paths in the same order, in which the walk over a target
/// meets them as well: then each is found at its place, and the order by path is worked out once
/// for all of them. Nothing depends on a hash, so that no text can be made to slow it down.
class PropertyTable
{
public:
    /// Replaces what the table holds by the children of `object` that have a name. Reading one
    /// object after the other reuses the memory. What was counted goes to `report` when the paths
    /// change.
    void read(const Zar::DataSection& object, const PropertyChoice& choice,
              PropertyPasteReport& report);

    /// Null when there is none. `place` is where the property is expected, and becomes where the
    /// next one is; start with 0 for each target.
    StoredProperty* find(const std::string& path, std::size_t& place) noexcept;
    /// How many different paths that were chosen there are.
    std::size_t chosenCount() const noexcept { return m_chosenCount; }
    bool isEmpty() const noexcept { return m_size == 0; }
    /// The stored object's type name.
    const std::string& objectType() const noexcept { return m_objectType; }

    /// The table was applied to one more target.
    void countTarget() noexcept { ++m_targets; }
    /// Adds what was counted to the report, by path.
    void countInto(PropertyPasteReport& report);

private:
    void arrange(const PropertyChoice& choice);

    /// The first `m_size` count; the others keep memory for later.
    std::vector<StoredProperty> m_properties;
    std::size_t m_size = 0;
    std::size_t m_chosenCount = 0;
    std::size_t m_targets = 0;
    /// Positions of the properties that are first, sorted by path.
    std::vector<std::uint32_t> m_order;
    std::string m_objectType;
};

} // namespace kyr::properties
