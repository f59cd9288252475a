#include "property_table.h"

#include <host/core/debug_message.h>

#include <algorithm>
#include <array>
#include <functional>

namespace kyr::properties {
namespace {

constexpr std::size_t fewestSlots = 64;

} // namespace

void PropertyTable::read(const Zar::DataSection& object)
{
    static constexpr std::array<Zar::StringRef, 3> keys{"name", "value", "type"};
    constexpr std::uint32_t hasName = 1;
    clear();
    std::array<std::string, 3> texts;
    for (const Zar::DataSectionPtr& child : object) {
        if (!Zar::verify(static_cast<bool>(child), "childSection", "scene_browser_data"))
            continue;
        if ((child->readStrings(keys.data(), texts.data(), keys.size()) & hasName) == 0)
            continue;
        makeRoom();
        std::uint32_t& slot = m_slots[slotOf(texts[0])];
        if (slot != 0)
            continue;
        StoredProperty& property = m_properties[m_size];
        slot = static_cast<std::uint32_t>(++m_size);
        property.path.swap(texts[0]);
        property.value.tryGetMutable<std::string>()->swap(texts[1]);
        property.type.swap(texts[2]);
    }
}

void PropertyTable::clear()
{
    // Clearing the slots never costs more than filling them did.
    const bool isMostlyFree = m_slots.size() > 16 * m_size;
    m_slots.assign(isMostlyFree ? fewestSlots : m_slots.size(), 0);
    m_size = 0;
}

const StoredProperty* PropertyTable::find(const std::string& path) const noexcept
{
    if (m_size == 0)
        return nullptr;
    const std::uint32_t position = m_slots[slotOf(path)];
    return position == 0 ? nullptr : &m_properties[position - 1];
}

std::size_t PropertyTable::slotOf(const std::string& path) const noexcept
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = std::hash<std::string>()(path) & mask;
    while (m_slots[slot] != 0 && m_properties[m_slots[slot] - 1].path != path)
        slot = (slot + 1) & mask;
    return slot;
}

void PropertyTable::makeRoom()
{
    if (m_size == m_properties.size())
        m_properties.emplace_back();
    if (2 * (m_size + 1) <= m_slots.size())
        return;
    m_slots.assign(std::max(fewestSlots, 2 * m_slots.size()), 0);
    for (std::size_t i = 0; i < m_size; ++i)
        m_slots[slotOf(m_properties[i].path)] = static_cast<std::uint32_t>(i + 1);
}

} // namespace kyr::properties
