#include "xml_section.h"

#include "xml_reader.h"
#include "xml_text.h"

#include <pugixml.hpp>

#include <cstring>
#include <utility>

namespace Zar {
namespace {

constexpr const char* escapedAttribute = "escaped";
// Stands in for tags that are no plain name.
constexpr const char* anyElement = "section";
constexpr const char* tagAttribute = "tag";

constexpr const char* indentation = "  ";
constexpr unsigned parserOptions =
    pugi::parse_default | pugi::parse_ws_pcdata_single | pugi::parse_embed_pcdata;

class StringWriter final : public pugi::xml_writer
{
public:
    explicit StringWriter(std::string& text) noexcept : m_text(text) {}
    void write(const void* data, std::size_t size) override
    {
        m_text.append(static_cast<const char*>(data), size);
    }

private:
    std::string& m_text;
};

bool isElement(pugi::xml_node node)
{
    return node.type() == pugi::node_element;
}

bool isText(pugi::xml_node node)
{
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

pugi::xml_node elementFrom(pugi::xml_node node)
{
    while (!node.empty() && !isElement(node))
        node = node.next_sibling();
    return node;
}

void setTag(pugi::xml_node node, StringRef tag)
{
    if (xml::isPlainName(tag)) {
        node.set_name(std::string(tag).c_str());
    } else {
        node.set_name(anyElement);
        node.append_attribute(tagAttribute).set_value(xml::escaped(tag, "\r\n\t").c_str());
    }
}

// The attribute that holds the tag of an element that stands in for another name.
pugi::xml_attribute tagAttributeOf(pugi::xml_node node, const char* name)
{
    return std::strcmp(name, anyElement) == 0 ? node.attribute(tagAttribute)
                                              : pugi::xml_attribute();
}

std::string tagOf(pugi::xml_node node)
{
    const pugi::xml_attribute tag = tagAttributeOf(node, node.name());
    return tag ? xml::unescaped(tag.value()) : node.name();
}

bool hasTag(pugi::xml_node node, StringRef tag)
{
    const char* name = node.name();
    if (*name == *anyElement) {
        if (const pugi::xml_attribute written = tagAttributeOf(node, name))
            return xml::unescaped(written.value()) == tag;
    }
    return name == tag;
}

pugi::xml_node findFrom(pugi::xml_node node, StringRef tag)
{
    while (!node.empty() && !(isElement(node) && hasTag(node, tag)))
        node = node.next_sibling();
    return node;
}

// An element's first text is its own value or a child; comments may have split the text.
void readText(pugi::xml_node node, std::string& text)
{
    text = node.value();
    for (pugi::xml_node child = node.first_child(); !child.empty(); child = child.next_sibling()) {
        if (isText(child))
            text += child.value();
    }
    if (!node.first_attribute().empty() && !node.attribute(escapedAttribute).empty())
        text = xml::unescaped(text);
}

std::string textOf(pugi::xml_node node)
{
    std::string text;
    readText(node, text);
    return text;
}

void removeTextChildren(pugi::xml_node node)
{
    for (pugi::xml_node child = node.first_child(); child;) {
        const pugi::xml_node next = child.next_sibling();
        if (isText(child))
            node.remove_child(child);
        child = next;
    }
}

// The node has no text yet.
void addTextTo(pugi::xml_node node, StringRef text)
{
    if (text.empty())
        return;
    const bool escape = !xml::survives(text);
    if (escape)
        node.append_attribute(escapedAttribute).set_value(true);
    const std::string written = escape ? xml::escaped(text) : std::string(text);
    node.prepend_child(pugi::node_pcdata).set_value(written.c_str());
}

void setTextOf(pugi::xml_node node, StringRef text)
{
    removeTextChildren(node);
    node.remove_attribute(escapedAttribute);
    // An element that was read may hold its text without a child.
    if (*node.value() != '\0')
        node.text().set("");
    addTextTo(node, text);
}

// Writes the text of each element of what was read as this class writes it. As it stood there, it
// might read differently the next time: a reference to white space beside elements is dropped as
// indentation, one to a carriage return becomes a line end.
class TextSettler final : public pugi::xml_tree_walker
{
public:
    bool begin(pugi::xml_node& root) override { return for_each(root); }
    bool for_each(pugi::xml_node& node) override
    {
        if (isElement(node))
            setTextOf(node, textOf(node));
        return true;
    }
};

pugi::xml_node insertElement(pugi::xml_node parent, int index)
{
    pugi::xml_node before;
    if (index >= 0) {
        before = elementFrom(parent.first_child());
        for (; before && index > 0; --index)
            before = elementFrom(before.next_sibling());
    }
    return before ? parent.insert_child_before(pugi::node_element, before)
                  : parent.append_child(pugi::node_element);
}

} // namespace

class XMLSection::Document : public SafeReferenceCount
{
public:
    pugi::xml_document xml;
    bool isSettled = true; // no text stands there as it was read
};

XMLSection::XMLSection(StringRef tag) : m_document(new Document)
{
    pugi::xml_node root = m_document->xml.append_child(pugi::node_element);
    setTag(root, tag);
    m_node = root.internal_object();
}

XMLSection::XMLSection(SmartPointer<Document> document, pugi::xml_node_struct* node) noexcept
    : m_document(std::move(document)), m_node(node)
{}

XMLSection::~XMLSection() = default;

SmartPointer<XMLSection>
XMLSection::createFromBinary(StringRef tag, const SmartPointer<BinaryBlock>& block, bool matchTag)
{
    XMLReader reader(tag, block, matchTag);
    while (reader.advance()) {
    }
    return reader.document();
}

SmartPointer<XMLSection> XMLSection::parse(StringRef text)
{
    const SmartPointer<Document> document(new Document);
    document->isSettled = false;
    if (!document->xml.load_buffer(text.data(), text.size(), parserOptions, pugi::encoding_utf8))
        return nullptr;
    const pugi::xml_node root = document->xml.document_element();
    return root ? new XMLSection(document, root.internal_object()) : nullptr;
}

bool XMLSection::parseChildren(StringRef text)
{
    // The parser drops a byte order mark at the front, where it is text here.
    if (text.substr(0, xml::byteOrderMark.size()) == xml::byteOrderMark)
        return parseChildren("<!---->" + std::string(text));
    m_document->isSettled = false;
    return bool(pugi::xml_node(m_node).append_buffer(
        text.data(), text.size(), parserOptions | pugi::parse_fragment, pugi::encoding_utf8));
}

DataSectionPtr XMLSection::section(pugi::xml_node_struct* node) const
{
    return node ? new XMLSection(m_document, node) : nullptr;
}

std::string XMLSection::tag() const
{
    return tagOf(pugi::xml_node(m_node));
}

std::string XMLSection::text() const
{
    return textOf(pugi::xml_node(m_node));
}

bool XMLSection::setText(StringRef text)
{
    setTextOf(pugi::xml_node(m_node), text);
    return true;
}

DataSectionPtr XMLSection::insertSection(StringRef tag, int index)
{
    const pugi::xml_node child = insertElement(pugi::xml_node(m_node), index);
    setTag(child, tag);
    return section(child.internal_object());
}

int XMLSection::countChildren() const
{
    int count = 0;
    for (pugi::xml_node child : pugi::xml_node(m_node).children())
        count += isElement(child) ? 1 : 0;
    return count;
}

DataSectionPtr XMLSection::firstChild() const
{
    return section(elementFrom(pugi::xml_node(m_node).first_child()).internal_object());
}

DataSectionPtr XMLSection::nextSibling() const
{
    return section(elementFrom(pugi::xml_node(m_node).next_sibling()).internal_object());
}

DataSectionPtr XMLSection::findChild(StringRef tag, const DataSectionCreator* creator) const
{
    const pugi::xml_node child = findFrom(pugi::xml_node(m_node).first_child(), tag);
    if (!child && creator)
        return (*creator)(tag);
    return section(child.internal_object());
}

bool XMLSection::writeString(StringRef key, StringRef text)
{
    pugi::xml_node parent(m_node);
    pugi::xml_node child = findFrom(parent.first_child(), key);
    if (!child) {
        child = parent.append_child(pugi::node_element);
        setTag(child, key);
        addTextTo(child, text);
    } else {
        setTextOf(child, text);
    }
    return true;
}

std::string XMLSection::readString(StringRef key, StringRef fallback, int occurrence) const
{
    pugi::xml_node child = findFrom(pugi::xml_node(m_node).first_child(), key);
    for (; child && occurrence > 0; --occurrence)
        child = findFrom(child.next_sibling(), key);
    return child ? textOf(child) : std::string(fallback);
}

std::uint32_t XMLSection::readStrings(const StringRef* keys, std::string* texts,
                                      std::size_t count) const
{
    std::uint32_t found = 0;
    pugi::xml_node child = pugi::xml_node(m_node).first_child();
    for (; !child.empty(); child = child.next_sibling()) {
        if (!isElement(child))
            continue;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t bit = std::uint32_t(1) << i;
            if ((found & bit) == 0 && hasTag(child, keys[i])) {
                readText(child, texts[i]);
                found |= bit;
                break;
            }
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        if ((found >> i & 1) == 0)
            texts[i].clear();
    }
    return found;
}

void XMLSection::settleText() const
{
    if (std::exchange(m_document->isSettled, true))
        return;
    TextSettler settler;
    m_document->xml.document_element().traverse(settler);
}

void XMLSection::printChildren(std::string& text) const
{
    settleText();
    StringWriter writer(text);
    for (const pugi::xml_node child : pugi::xml_node(m_node).children())
        child.print(writer, indentation, pugi::format_indent, pugi::encoding_utf8, 1);
}

SmartPointer<BinaryBlock> XMLSection::asBinary() const
{
    settleText();
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    StringWriter writer(text);
    pugi::xml_node(m_node).print(writer, indentation, pugi::format_indent, pugi::encoding_utf8);
    return new BinaryBlock(std::move(text), "BinaryBlock/XMLSection");
}

} // namespace Zar
