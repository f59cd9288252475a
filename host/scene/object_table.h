#pragma once

#include <host/scene/asset_selection.h>

#include <cstdint>
#include <vector>

/// Finds the objects of a list in O(1), which it does not hold.
/// An object is told by its address and by the top-level object that keeps it alive, so a new one
/// at the address of a dead one is another.
class ObjectTable
{
public:
    using Objects = IAssetSelection::Objects;

    ObjectTable() = default;
    /// The objects of `list`, which has no equal ones.
    static ObjectTable of(const Objects& list);
    /// Takes out of `list` all but the first of equal objects and puts those in.
    static ObjectTable withoutDuplicates(Objects& list);

    /// `list` as it was indexed.
    bool contains(const Objects& list, const kyr::PersistentObject& object) const;

private:
    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t place = 0; // in the list, counted from 1
    };

    explicit ObjectTable(std::size_t size);

    /// False when an equal object is in.
    bool insert(const Objects& list, std::size_t place);
    std::size_t find(const Objects& list, const kyr::PersistentObject& object,
                     std::uint32_t hash) const;

    std::vector<Slot> m_slots;
};
