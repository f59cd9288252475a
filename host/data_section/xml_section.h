#pragma once

#include <host/data_section/data_section.h>

namespace pugi {
struct xml_node_struct;
}

namespace Zar {

/// Section of an XML document.
/// The serialised form is indented UTF-8 XML 1.0 without a document type and never holds a NUL
/// byte. Tags that are no plain XML name and texts that XML cannot carry as they are (control
/// characters, carriage returns, only white space, invalid UTF-8) are written with escapes:
/// `<value escaped="true">a\x00b</value>`, `<section tag="two words"/>`.
class XMLSection final : public DataSection
{
public:
    /// A new document whose root has that tag.
    explicit XMLSection(StringRef tag);

    /// The root of the document in `block`; null when the bytes are no well-formed document, have a
    /// document type, or would take unreasonable memory (more than 512 MB of text, 2 GB in all or
    /// 256 levels). With `matchTag` also null when the root's tag is not `tag`.
    /// Takes time and memory linear in the bytes, whatever they are.
    /// `XMLReader` does the same piece by piece.
    static SmartPointer<XMLSection>
    createFromBinary(StringRef tag, const SmartPointer<BinaryBlock>& block, bool matchTag);

    std::string tag() const override;
    std::string text() const override;
    bool setText(StringRef text) override;
    DataSectionPtr insertSection(StringRef tag, int index = -1) override;
    int countChildren() const override;
    DataSectionPtr firstChild() const override;
    DataSectionPtr nextSibling() const override;
    DataSectionPtr findChild(StringRef tag,
                             const DataSectionCreator* creator = nullptr) const override;
    bool writeString(StringRef key, StringRef text) override;
    std::string readString(StringRef key, StringRef fallback = {},
                           int occurrence = 0) const override;
    std::uint32_t readStrings(const StringRef* keys, std::string* texts,
                              std::size_t count) const override;
    SmartPointer<BinaryBlock> asBinary() const override;

private:
    friend class XMLReader;
    friend class XMLWriter;
    class Document;

    // Bare work of the parser and the printer.

    /// Null when the text is not well-formed.
    static SmartPointer<XMLSection> parse(StringRef text);
    /// Appends elements and texts that are written one behind the other.
    bool parseChildren(StringRef text);
    /// What is written from now on reads as it reads here.
    void settleText() const;
    void printChildren(std::string& text) const;

    XMLSection(SmartPointer<Document> document, pugi::xml_node_struct* node) noexcept;
    ~XMLSection() override;
    DataSectionPtr section(pugi::xml_node_struct* node) const;

    SmartPointer<Document> m_document;
    pugi::xml_node_struct* m_node;
};

} // namespace Zar
