#include "property_document.h"

#include "property_text.h"
#include "property_walk.h"

#include <host/core/debug_message.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace kyr::properties {
namespace {

constexpr const char* sourceFile = "scene_browser_data";

/// Applies one table to one object, and counts.
class PropertyPaste
{
public:
    explicit PropertyPaste(const PropertyTable& table) noexcept : m_table(table) {}

    void operator()(const BoundProperty& property, const std::string& path)
    {
        if (!isVisibleValue(property) || property.isConst() || property.isReadOnly())
            return;
        const StoredProperty* stored = m_table.find(path);
        if (!stored)
            return;
        ++m_matched;
        if (stored->type != property.propertyType().name()) {
            ++m_typeMismatches;
            return;
        }
        const auto& text = *stored->value.tryGet<std::string>();
        if (valueEqualsText(property.get(), text))
            return;
        ++(property.set(stored->value) ? m_changed : m_refused);
        Zar::DebugMessageHelper(0, 2).message("Paste '%s' to property '%s'", text.c_str(),
                                              property.name().c_str());
    }

    void addTo(PropertyPasteReport& report) const
    {
        report.targets += 1;
        report.changedObjects += m_changed > 0 ? 1 : 0;
        report.changedProperties += m_changed;
        report.unmatched += m_table.size() - std::min(m_matched, m_table.size());
        report.typeMismatches += m_typeMismatches;
        report.refused += m_refused;
    }

private:
    const PropertyTable& m_table;
    std::size_t m_matched = 0;
    std::size_t m_typeMismatches = 0;
    std::size_t m_changed = 0;
    std::size_t m_refused = 0;
};

/// The stored objects and their tables, which are asked for in the order of the targets.
class StoredObjects
{
public:
    StoredObjects(const Zar::DataSectionPtr& document, std::size_t targets)
    {
        document->openSections("object", m_sections, nullptr);
        const bool isDealtOnce = targets <= m_sections.size();
        m_tables.resize(isDealtOnce ? 1 : m_sections.size());
    }

    bool isEmpty() const noexcept { return m_sections.empty(); }
    const Zar::DataSectionPtr& section(std::size_t target) const
    {
        return m_sections[target % m_sections.size()];
    }

    /// Valid until the next call.
    const PropertyTable& table(std::size_t target)
    {
        const std::size_t position = target % m_sections.size();
        PropertyTable& table = m_tables[position % m_tables.size()];
        if (target < m_sections.size())
            table.read(*m_sections[position]);
        return table;
    }

private:
    std::vector<Zar::DataSectionPtr> m_sections;
    /// One for each stored object that is dealt again, else one for all.
    std::vector<PropertyTable> m_tables;
};

} // namespace

bool pasteDocument(const IAssetSelection::Objects& targets, const Zar::DataSectionPtr& document,
                   PropertyPasteReport* report)
{
    StoredObjects stored(document, targets.size());
    if (stored.isEmpty()) {
        Zar::DebugMessageHelper(0, 5).message(
            "Paste properties: Cannot find any objects in clipboard");
        return false;
    }
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const ReflectedObject target = targets[i].object();
        Zar::verify(target.isValid(), "rObj", sourceFile);
        const Zar::DataSectionPtr& section = stored.section(i);
        if (!Zar::verify(static_cast<bool>(section), "objectSection", sourceFile))
            continue;
        const PropertyTable& table = stored.table(i);
        if (table.isEmpty()) {
            Zar::DebugMessageHelper(0, 4).message(
                "Paste properties: there are no any properties in %s",
                section->readString("type", {}, 0).c_str());
            continue;
        }
        applyObjectProperties(target, table, std::string(), report);
    }
    return true;
}

void applyObjectProperties(const ReflectedObject& target, const PropertyTable& table,
                           const std::string& prefix, PropertyPasteReport* report)
{
    PropertyPaste paste(table);
    walkProperties(target, prefix, paste);
    if (report)
        paste.addTo(*report);
}

} // namespace kyr::properties
