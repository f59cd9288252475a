#pragma once

#include <host/data_section/binary_block.h>
#include <host/data_section/xml_scan.h>
#include <host/data_section/xml_section.h>

namespace Zar {

/// Reads a document as `XMLSection::createFromBinary` does, piece by piece. A piece is 64 KB, or a
/// child of the root where that is larger. Time and memory are linear in the bytes.
class XMLReader
{
public:
    XMLReader(StringRef tag, SmartPointer<BinaryBlock> block, bool matchTag);
    ~XMLReader();

    /// Reads one piece. False when there is nothing left to read.
    bool advance();
    /// From 0 to 1.
    double progress() const noexcept;
    /// Hands over the children that were read since the last call, below a root like theirs; null
    /// when there are none. What was taken is not in `document`, so that a long document need never
    /// be in memory as a whole, nor be let go of at once.
    SmartPointer<XMLSection> takeChildren();
    /// The root, once all was read; null until then, and when the bytes are no such document.
    SmartPointer<XMLSection> document() const;

private:
    enum class State
    {
        Reading,
        Finished,
        Failed,
    };

    State readPiece();
    bool readRoot();
    bool readChildren();
    bool checkEnd() const;
    bool isEmptyRoot() const noexcept;
    StringRef rootName() const noexcept;

    std::string m_tag;
    bool m_matchTag;
    SmartPointer<BinaryBlock> m_block;
    StringRef m_text;
    xml::Scan m_scan;
    SmartPointer<XMLSection> m_root;
    /// Up to where children of the root were read.
    const char* m_read = nullptr;
    State m_state = State::Reading;
};

} // namespace Zar
