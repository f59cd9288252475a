#include "data_section.h"

namespace Zar {

DataSectionIterator DataSection::begin() const
{
    return DataSectionIterator(firstChild());
}

DataSectionIterator DataSection::end() const
{
    return {};
}

std::uint32_t DataSection::readStrings(const StringRef* keys, std::string* texts,
                                       std::size_t count) const
{
    std::uint32_t found = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const DataSectionPtr child = findChild(keys[i]);
        texts[i] = child ? child->text() : std::string();
        found |= std::uint32_t(child ? 1 : 0) << i;
    }
    return found;
}

void DataSection::openSections(StringRef tag, std::vector<DataSectionPtr>& sections,
                               const DataSectionCreator* creator) const
{
    const std::size_t before = sections.size();
    for (const DataSectionPtr& child : *this) {
        if (child->tag() == tag)
            sections.push_back(child);
    }
    if (sections.size() == before && creator)
        sections.push_back((*creator)(tag));
}

} // namespace Zar
