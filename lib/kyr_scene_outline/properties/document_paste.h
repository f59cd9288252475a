#pragma once

#include <host/data_section/data_section.h>
#include <host/reflection/reflected_object.h>
#include <kyr_scene_outline/properties/property_table.h>
#include <kyr_scene_outline/property_paste_report.h>

#include <cstddef>
#include <vector>

namespace kyr::properties {

/// Deals the objects of a document to targets in turn, starting again from the first when there
/// are more targets. All targets together cost linear time in the document and in their
/// properties.
class DocumentPaste
{
public:
    /// Reports a document that holds no object.
    DocumentPaste(const Zar::DataSectionPtr& document, std::size_t targetCount);

    /// Whether the document holds no object; there is nothing to paste then.
    bool isEmpty() const noexcept { return m_sections.empty(); }
    /// For each target once, in order.
    void pasteTo(std::size_t position, const ReflectedObject& target);

    const PropertyPasteReport& report() const noexcept { return m_report; }

private:
    const PropertyTable& table(std::size_t target);

    std::vector<Zar::DataSectionPtr> m_sections;
    /// One for each stored object that is dealt again, else one for all.
    std::vector<PropertyTable> m_tables;
    PropertyPasteReport m_report;
};

} // namespace kyr::properties
