#include "xml_writer.h"

#include "xml_section.h"
#include <host/core/debug_message.h>

#include <utility>

namespace Zar {
namespace {

// How a root without children ends, and one with children begins.
constexpr StringRef emptyEnd = " />\n";
constexpr StringRef tagEnd = ">\n";

} // namespace

XMLWriter::XMLWriter(StringRef tag)
    : m_text(SmartPointer<XMLSection>(new XMLSection(tag))->asBinary()->bytes())
{
    const std::size_t name = m_text.rfind('<') + 1;
    m_rootName = m_text.substr(name, m_text.find(' ', name) - name);
}

void XMLWriter::writeChildren(const DataSection& root)
{
    const auto* section = dynamic_cast<const XMLSection*>(&root);
    if (!verify(section, "section", "xml_writer"))
        return;
    const int count = section->countChildren();
    if (count > 0 && m_childCount == 0)
        m_text.replace(m_text.size() - emptyEnd.size(), emptyEnd.size(), tagEnd);
    m_childCount += std::size_t(count);
    section->printChildren(m_text);
}

std::string XMLWriter::take()
{
    if (m_childCount == 0)
        return {};
    std::string next;
    next.reserve(m_text.size()); // as much as a piece was, so that it need not grow
    return std::exchange(m_text, std::move(next));
}

std::string XMLWriter::takeEnd()
{
    if (m_childCount > 0)
        m_text.append("</").append(m_rootName).append(tagEnd);
    return std::exchange(m_text, {});
}

} // namespace Zar
