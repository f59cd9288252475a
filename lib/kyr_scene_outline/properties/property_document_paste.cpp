#include "property_document.h"

#include "document_paste.h"
#include "property_text.h"
#include "property_walk.h"

#include <host/core/debug_message.h>

#include <algorithm>

namespace kyr::properties {
namespace {

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

} // namespace

bool pasteDocument(const IAssetSelection::Objects& targets, const Zar::DataSectionPtr& document)
{
    DocumentPaste paste(document, targets.size());
    if (paste.isEmpty())
        return false;
    for (std::size_t i = 0; i < targets.size(); ++i)
        paste.pasteTo(i, targets[i].object());
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
