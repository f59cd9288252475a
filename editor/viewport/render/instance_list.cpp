#include "instance_list.h"

#include <unordered_map>

namespace editor {

namespace {

struct Group
{
    quint32 count = 0;
    quint32 nextSlot = 0;
};

} // namespace

InstanceList::InstanceList(const std::vector<const MeshGeometry*>& meshes,
                           const std::function<Entry(quint32)>& entryOf)
{
    std::unordered_map<const MeshGeometry*, quint32> groupOf;
    std::vector<Group> groups;
    std::vector<quint32> groupOfEntry;
    groupOfEntry.reserve(meshes.size());
    for (const MeshGeometry* mesh : meshes) {
        const auto [found, isNew] = groupOf.try_emplace(mesh, quint32(groups.size()));
        if (isNew)
            groups.emplace_back();
        ++groups[found->second].count;
        groupOfEntry.push_back(found->second);
    }

    quint32 slot = 0;
    for (Group& group : groups) {
        group.nextSlot = slot;
        for (quint32 done = 0; done < group.count; done += chunkSize) {
            const quint32 count = std::min(chunkSize, group.count - done);
            m_chunks.push_back({{}, {}, slot + done, count, {}, {}});
        }
        slot += group.count;
    }

    m_slots.reserve(meshes.size());
    std::vector<quint32> entryAt(meshes.size());
    for (quint32 i = 0; i < meshes.size(); ++i) {
        m_slots.push_back(groups[groupOfEntry[i]].nextSlot++);
        entryAt[m_slots.back()] = i;
    }
    m_instances.reserve(meshes.size());
    for (Chunk& chunk : m_chunks) {
        chunk.items = {~quint32(0), 0};
        for (quint32 i = chunk.first; i < chunk.first + chunk.count; ++i) {
            Entry entry = entryOf(entryAt[i]);
            m_instances.push_back(entry.instance);
            chunk.bounds.include(entry.bounds);
            chunk.items.first = std::min(chunk.items.first, entry.place);
            chunk.items.end = std::max(chunk.items.end, entry.place + 1);
            chunk.shape = entry.shape;
            chunk.mesh.swap(entry.mesh);
        }
    }
}

} // namespace editor
