#include "xml_reader.h"

#include "xml_text.h"

#include <algorithm>
#include <utility>

namespace Zar {
namespace {

constexpr std::size_t pieceBytes = std::size_t(64) << 10;
constexpr StringRef whiteSpace = " \t\n\r";

StringRef between(const char* begin, const char* end) noexcept
{
    return {begin, std::size_t(end - begin)};
}

StringRef withoutByteOrderMark(StringRef text) noexcept
{
    constexpr StringRef mark = xml::byteOrderMark;
    return text.substr(text.substr(0, mark.size()) == mark ? mark.size() : 0);
}

} // namespace

XMLReader::XMLReader(StringRef tag, SmartPointer<BinaryBlock> block, bool matchTag)
    : m_tag(tag)
    , m_matchTag(matchTag)
    , m_block(std::move(block))
    , m_text(withoutByteOrderMark(m_block ? m_block->bytes() : StringRef()))
    , m_scan(m_text)
{}

XMLReader::~XMLReader() = default;

bool XMLReader::advance()
{
    if (m_state == State::Reading)
        m_state = readPiece();
    return m_state == State::Reading;
}

double XMLReader::progress() const noexcept
{
    return m_text.empty() ? 1 : double(m_scan.position() - m_text.data()) / double(m_text.size());
}

SmartPointer<XMLSection> XMLReader::takeChildren()
{
    if (!m_root || !m_root->firstChild())
        return nullptr;
    return std::exchange(m_root, SmartPointer<XMLSection>(new XMLSection(m_root->tag())));
}

SmartPointer<XMLSection> XMLReader::document() const
{
    return m_state == State::Finished ? m_root : nullptr;
}

XMLReader::State XMLReader::readPiece()
{
    const auto left = std::size_t(m_text.data() + m_text.size() - m_scan.position());
    const xml::Scan::State scanned = m_scan.advance(m_scan.position() + std::min(left, pieceBytes));
    if (scanned == xml::Scan::State::Failed)
        return State::Failed;
    if (!m_scan.rootTag().empty() && !((m_root || readRoot()) && readChildren()))
        return State::Failed;
    if (scanned == xml::Scan::State::Running)
        return State::Reading;
    return checkEnd() ? State::Finished : State::Failed;
}

bool XMLReader::isEmptyRoot() const noexcept
{
    const StringRef tag = m_scan.rootTag();
    return tag[tag.size() - 2] == '/';
}

StringRef XMLReader::rootName() const noexcept
{
    const StringRef name = m_scan.rootTag().substr(1);
    return name.substr(0, name.find_first_of(" \t\n\r/>"));
}

// Everything up to the start tag, which is closed at once.
bool XMLReader::readRoot()
{
    m_read = m_scan.rootTag().data() + m_scan.rootTag().size();
    std::string head(between(m_text.data(), m_read));
    if (!isEmptyRoot())
        head.append("</").append(rootName()).append(">");
    m_root = xml::isValid(head) ? XMLSection::parse(head) : nullptr;
    return m_root && (!m_matchTag || m_root->tag() == m_tag);
}

bool XMLReader::readChildren()
{
    const char* end = m_scan.rootEnd() ? m_scan.rootEnd() : m_scan.position();
    const StringRef children = between(std::exchange(m_read, end), end);
    return children.empty() || (xml::isValid(children) && m_root->parseChildren(children));
}

// The root's end tag and what stands behind it, which an element stands in front of for parsing.
bool XMLReader::checkEnd() const
{
    StringRef rest = between(m_scan.rootEnd(), m_text.data() + m_text.size());
    if (!isEmptyRoot()) {
        const StringRef name = rootName();
        if (rest.substr(2, name.size()) != name)
            return false;
        rest.remove_prefix(2 + name.size());
        const std::size_t end = rest.find_first_not_of(whiteSpace);
        if (end == StringRef::npos || rest[end] != '>')
            return false;
        rest.remove_prefix(end + 1);
    }
    return rest.find_first_not_of(whiteSpace) == StringRef::npos ||
           (xml::isValid(rest) && XMLSection::parse("<root/>" + std::string(rest)));
}

} // namespace Zar
