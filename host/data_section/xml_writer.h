#pragma once

#include <host/data_section/data_section.h>

#include <cstddef>
#include <string>

namespace Zar {

/// Writes a document piece by piece: all that is taken is the same bytes as `XMLSection::asBinary`
/// of a root that has all the children.
class XMLWriter
{
public:
    /// The root's tag.
    explicit XMLWriter(StringRef tag);

    /// Appends the children of `root`, which must be a section of XML.
    void writeChildren(const DataSection& root);
    /// Bytes that were written and not taken.
    std::size_t size() const noexcept { return m_text.size(); }
    /// What was written and not taken, so that no text has to be in one piece: nothing before the
    /// first child.
    std::string take();
    /// The same with the end of the document, for which nothing follows.
    std::string takeEnd();

private:
    std::string m_text;
    std::string m_rootName;
    std::size_t m_childCount = 0;
};

} // namespace Zar
