#pragma once

#include <host/data_section/binary_block.h>
#include <host/data_section/data_section.h>

#include <cstddef>
#include <string>

namespace Zar {

/// Writes a document piece by piece: the same bytes as `XMLSection::asBinary` of a root that has
/// all the children.
class XMLWriter
{
public:
    /// The root's tag.
    explicit XMLWriter(StringRef tag);

    /// Appends the children of `root`, which must be a section of XML.
    void writeChildren(const DataSection& root);
    /// Takes memory for that many children in all, the rest being like those so far.
    void expect(std::size_t childCount);
    /// The whole document. The writer is empty then.
    SmartPointer<BinaryBlock> takeBinary();

private:
    std::string m_text;
    std::string m_rootName;
    std::size_t m_childCount = 0;
};

} // namespace Zar
