#include "property_table.h"

#include <host/core/debug_message.h>

#include <algorithm>
#include <array>
#include <numeric>

namespace kyr::properties {

void PropertyTable::read(const Zar::DataSection& object, const PropertyChoice& choice,
                         PropertyPasteReport& report)
{
    static constexpr std::array<Zar::StringRef, 3> keys{"name", "value", "type"};
    constexpr std::uint32_t hasName = 1;
    const std::size_t sizeBefore = std::exchange(m_size, 0);
    bool hasSamePaths = true;
    const auto notePathsChange = [&] {
        if (!std::exchange(hasSamePaths, false))
            return;
        m_size = sizeBefore;
        countInto(report);
    };

    std::array<std::string, 3> texts;
    std::size_t size = 0;
    for (const Zar::DataSectionPtr& child : object) {
        if (!Zar::verify(bool(child), "childSection", "scene_browser_data"))
            continue;
        if ((child->readStrings(keys.data(), texts.data(), keys.size()) & hasName) == 0)
            continue;
        if (size >= sizeBefore || m_properties[size].path != texts[0])
            notePathsChange();
        if (size == m_properties.size())
            m_properties.emplace_back();
        StoredProperty& property = m_properties[size++];
        property.path.swap(texts[0]);
        property.value.tryGetMutable<std::string>()->swap(texts[1]);
        property.type.swap(texts[2]);
    }
    if (size != sizeBefore)
        notePathsChange();
    m_size = size;
    if (!hasSamePaths)
        arrange(choice);
    if (isEmpty())
        m_objectType = object.readString("type", {}, 0);
}

void PropertyTable::arrange(const PropertyChoice& choice)
{
    m_order.resize(m_size);
    std::iota(m_order.begin(), m_order.end(), 0u);
    const auto pathAt = [this](std::uint32_t i) -> const std::string& {
        return m_properties[i].path;
    };
    std::stable_sort(m_order.begin(), m_order.end(),
                     [&pathAt](std::uint32_t a, std::uint32_t b) { return pathAt(a) < pathAt(b); });
    m_order.erase(
        std::unique(m_order.begin(), m_order.end(),
                    [&pathAt](std::uint32_t a, std::uint32_t b) { return pathAt(a) == pathAt(b); }),
        m_order.end());
    for (std::size_t i = 0; i < m_size; ++i)
        m_properties[i].isFirst = false;
    m_chosenCount = 0;
    for (const std::uint32_t i : m_order) {
        StoredProperty& property = m_properties[i];
        property.isFirst = true;
        property.isChosen = !choice || choice(property.path);
        m_chosenCount += property.isChosen ? 1 : 0;
    }
}

StoredProperty* PropertyTable::find(const std::string& path, std::size_t& place) noexcept
{
    if (place < m_size && m_properties[place].isFirst && m_properties[place].path == path)
        return &m_properties[place++];
    const auto found = std::lower_bound(
        m_order.begin(), m_order.end(), path,
        [this](std::uint32_t i, const std::string& text) { return m_properties[i].path < text; });
    if (found == m_order.end() || m_properties[*found].path != path)
        return nullptr;
    place = *found + 1;
    return &m_properties[*found];
}

void PropertyTable::countInto(PropertyPasteReport& report)
{
    const std::size_t targets = std::exchange(m_targets, 0);
    for (std::size_t i = 0; targets > 0 && i < m_size; ++i) {
        if (!m_properties[i].isFirst || !m_properties[i].isChosen)
            continue;
        const PropertyPasteCounts counts = std::exchange(m_properties[i].counts, {});
        PropertyPasteCounts& sum = report.properties[m_properties[i].path];
        sum.changed += counts.changed;
        sum.equal += counts.equal;
        sum.typeMismatches += counts.typeMismatches;
        sum.refused += counts.refused;
        const std::size_t matched =
            counts.changed + counts.equal + counts.typeMismatches + counts.refused;
        sum.unmatched += targets - std::min(matched, targets);
    }
}

} // namespace kyr::properties
