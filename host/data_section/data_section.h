#pragma once

#include <host/core/smart_pointer.h>
#include <host/core/string_ref.h>
#include <host/data_section/binary_block.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Zar {

class DataSection;
class DataSectionIterator;

using DataSectionPtr = SmartPointer<DataSection>;
/// Makes the section that a search hands out when it finds none. Owned by the caller.
using DataSectionCreator = std::function<DataSectionPtr(StringRef tag)>;

/// Node of a document: a tag, a text and ordered children. Tags need not be unique.
/// Tags and texts are any bytes. A section keeps its whole document alive; one document belongs to
/// one thread at a time. Two pointers may stand for the same section. Counting children and finding
/// one by its tag or index is linear in them, a step to the next O(1).
class DataSection : public SafeReferenceCount
{
public:
    virtual std::string tag() const = 0;
    virtual std::string text() const = 0;
    virtual bool setText(StringRef text) = 0;

    /// Adds a child before the one at `index`; -1 or an index past the end appends it.
    virtual DataSectionPtr insertSection(StringRef tag, int index = -1) = 0;
    virtual int countChildren() const = 0;
    virtual DataSectionPtr firstChild() const = 0;
    virtual DataSectionPtr nextSibling() const = 0;

    /// The first child with that tag, else what `creator` makes, else null.
    virtual DataSectionPtr findChild(StringRef tag,
                                     const DataSectionCreator* creator = nullptr) const = 0;
    /// Appends every child with that tag, in document order; when there is none, what `creator`
    /// makes.
    void openSections(StringRef tag, std::vector<DataSectionPtr>& sections,
                      const DataSectionCreator* creator = nullptr) const;

    /// Sets the text of the first child named `key`, which is appended when there is none.
    virtual bool writeString(StringRef key, StringRef text) = 0;
    /// The text of the child named `key`, of several the one at position `occurrence` among them;
    /// `fallback` when there is none.
    virtual std::string readString(StringRef key, StringRef fallback = {},
                                   int occurrence = 0) const = 0;

    /// Several keys in one pass: `texts[i]` becomes the text of the first child named `keys[i]`,
    /// empty when there is none. Returns which keys were found, bit i for `keys[i]`; at most 32.
    virtual std::uint32_t readStrings(const StringRef* keys, std::string* texts,
                                      std::size_t count) const;

    /// The section and everything below it in its serialised form.
    virtual SmartPointer<BinaryBlock> asBinary() const = 0;

    DataSectionIterator begin() const;
    DataSectionIterator end() const;
};

/// Visits the children of a section in document order. Inserting children is safe.
class DataSectionIterator
{
public:
    DataSectionIterator() noexcept = default;
    explicit DataSectionIterator(DataSectionPtr section) noexcept : m_section(std::move(section)) {}

    const DataSectionPtr& operator*() const noexcept { return m_section; }
    DataSectionIterator& operator++()
    {
        m_section = m_section->nextSibling();
        return *this;
    }

    /// Tells a position from the end only.
    friend bool operator!=(const DataSectionIterator& a, const DataSectionIterator& b) noexcept
    {
        return bool(a.m_section) != bool(b.m_section);
    }

private:
    DataSectionPtr m_section;
};

} // namespace Zar
