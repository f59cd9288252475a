#pragma once

#include <host/data_section/data_section.h>
#include <host/variant/variant.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kyr::properties {

/// What a "property" section says.
struct StoredProperty
{
    std::string path;
    std::string type;
    /// A string.
    lumo::Variant value{std::string()};
};

/// The properties of one stored object by path; of several with one path the first. The sections
/// are read once, whatever number of objects the table is applied to.
class PropertyTable
{
public:
    /// Replaces what the table holds by the children of `object` that have a name. Reading one
    /// object after the other reuses the memory.
    void read(const Zar::DataSection& object);

    /// Null when there is none.
    const StoredProperty* find(const std::string& path) const noexcept;
    std::size_t size() const noexcept { return m_size; }
    bool isEmpty() const noexcept { return m_size == 0; }

private:
    /// The slot of the property with that path, or the free one where it belongs.
    std::size_t slotOf(const std::string& path) const noexcept;
    void makeRoom();
    void clear();

    /// The first `m_size` count; the others keep memory for later.
    std::vector<StoredProperty> m_properties;
    std::size_t m_size = 0;
    /// Positions in `m_properties` plus one, 0 when free. A power of two, at most half of it taken.
    std::vector<std::uint32_t> m_slots;
};

} // namespace kyr::properties
