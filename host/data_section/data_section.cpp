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
