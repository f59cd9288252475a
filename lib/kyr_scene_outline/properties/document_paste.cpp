#include "document_paste.h"

#include "property_document.h"

#include <host/core/debug_message.h>

namespace kyr::properties {

DocumentPaste::DocumentPaste(const Zar::DataSectionPtr& document, std::size_t targetCount)
{
    document->openSections("object", m_sections, nullptr);
    const bool isDealtOnce = targetCount <= m_sections.size();
    m_tables.resize(isDealtOnce ? 1 : m_sections.size());
    if (isEmpty()) {
        Zar::DebugMessageHelper(0, 5).message(
            "Paste properties: Cannot find any objects in clipboard");
    }
}

void DocumentPaste::pasteTo(std::size_t position, const ReflectedObject& target)
{
    constexpr const char* sourceFile = "scene_browser_data";
    Zar::verify(target.isValid(), "rObj", sourceFile);
    const Zar::DataSectionPtr& section = m_sections[position % m_sections.size()];
    if (!Zar::verify(static_cast<bool>(section), "objectSection", sourceFile))
        return;
    const PropertyTable& stored = table(position);
    if (stored.isEmpty()) {
        Zar::DebugMessageHelper(0, 4).message("Paste properties: there are no any properties in %s",
                                              section->readString("type", {}, 0).c_str());
        return;
    }
    applyObjectProperties(target, stored, std::string(), &m_report);
}

const PropertyTable& DocumentPaste::table(std::size_t target)
{
    const std::size_t position = target % m_sections.size();
    PropertyTable& table = m_tables[position % m_tables.size()];
    if (target < m_sections.size())
        table.read(*m_sections[position]);
    return table;
}

} // namespace kyr::properties
