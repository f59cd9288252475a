#include "object_table.h"

namespace {

std::uint32_t hashOf(const kyr::PersistentObject& object)
{
    const auto address = reinterpret_cast<std::uintptr_t>(object.identity());
    return std::uint32_t((std::uint64_t(address) * 0x9e3779b97f4a7c15u) >> 32);
}

} // namespace

ObjectTable::ObjectTable(std::size_t size)
{
    std::size_t capacity = 8;
    while (capacity < 2 * size)
        capacity *= 2;
    m_slots.resize(capacity);
}

ObjectTable ObjectTable::of(const Objects& list)
{
    ObjectTable table(list.size());
    for (std::size_t place = 0; place < list.size(); ++place)
        table.insert(list, place);
    return table;
}

ObjectTable ObjectTable::withoutDuplicates(Objects& list)
{
    ObjectTable table(list.size());
    std::size_t kept = 0;
    for (std::size_t place = 0; place < list.size(); ++place) {
        if (kept != place)
            list[kept] = list[place];
        if (table.insert(list, kept))
            ++kept;
    }
    list.resize(kept);
    return table;
}

// The slot of an equal object, or the free one where it belongs.
std::size_t ObjectTable::find(const Objects& list, const kyr::PersistentObject& object,
                              std::uint32_t hash) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash & mask;
    while (m_slots[at].place != 0 &&
           !(m_slots[at].hash == hash && list[m_slots[at].place - 1] == object))
        at = (at + 1) & mask;
    return at;
}

bool ObjectTable::insert(const Objects& list, std::size_t place)
{
    const std::uint32_t hash = hashOf(list[place]);
    Slot& slot = m_slots[find(list, list[place], hash)];
    if (slot.place != 0)
        return false;
    slot = {hash, std::uint32_t(place + 1)};
    return true;
}

bool ObjectTable::contains(const Objects& list, const kyr::PersistentObject& object) const
{
    return !m_slots.empty() && m_slots[find(list, object, hashOf(object))].place != 0;
}
