#include "instance_list.h"

#include <unordered_map>

namespace editor {

namespace {

struct Group
{
    quint32 firstEntry;
    quint32 count = 0;
    quint32 nextSlot = 0;
};

} // namespace

InstanceList::InstanceList(const std::vector<Entry>& entries)
{
    std::unordered_map<const MeshGeometry*, quint32> groupOf;
    std::vector<Group> groups;
    std::vector<quint32> groupOfEntry;
    groupOfEntry.reserve(entries.size());
    for (quint32 i = 0; i < entries.size(); ++i) {
        const auto [found, isNew] =
            groupOf.try_emplace(entries[i].mesh.get(), quint32(groups.size()));
        if (isNew)
            groups.push_back({i});
        ++groups[found->second].count;
        groupOfEntry.push_back(found->second);
    }

    quint32 slot = 0;
    for (Group& group : groups) {
        group.nextSlot = slot;
        const Entry& first = entries[group.firstEntry];
        for (quint32 done = 0; done < group.count; done += chunkSize) {
            const quint32 count = std::min(chunkSize, group.count - done);
            m_chunks.push_back({first.mesh, first.shape, slot + done, count, {}, {}});
        }
        slot += group.count;
    }

    m_slots.reserve(entries.size());
    std::vector<quint32> entryAt(entries.size());
    for (quint32 i = 0; i < entries.size(); ++i) {
        m_slots.push_back(groups[groupOfEntry[i]].nextSlot++);
        entryAt[m_slots.back()] = i;
    }
    m_instances.reserve(entries.size());
    for (Chunk& chunk : m_chunks) {
        chunk.items = {~quint32(0), 0};
        for (quint32 i = chunk.first; i < chunk.first + chunk.count; ++i) {
            const Entry& entry = entries[entryAt[i]];
            m_instances.push_back(entry.instance);
            chunk.bounds.include(entry.bounds);
            chunk.items.first = std::min(chunk.items.first, entry.place);
            chunk.items.end = std::max(chunk.items.end, entry.place + 1);
        }
    }
}

} // namespace editor
