// Feeds bytes to the editor as if the importer's process had sent them: whatever comes, the scene
// that they make is whole, or there is none.
#include <editor/files/scene_stream_reader.h>

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

namespace {

using namespace editor;

constexpr qint64 mostBytes = 1 << 20;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void requireWhole(const SceneObject& root)
{
    std::vector<const SceneObject*> waiting{&root};
    while (!waiting.empty()) {
        const SceneObject* object = waiting.back();
        waiting.pop_back();
        if (object->mesh() && object->mesh()->asset) {
            const MeshGeometry& geometry = *object->mesh()->asset->geometry;
            for (const quint32 index : geometry.indices())
                require(index < geometry.vertices().size());
        }
        for (const SceneObjectPtr& child : object->children()) {
            require(child->parent() == object);
            waiting.push_back(child.get());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    SceneStreamReader reader(mostBytes);
    const auto end = reader.read(device, [](double) { return true; });
    require((end == SceneStreamReader::End::Refused) == !reader.reason().isEmpty());
    requireWhole(*reader.root());
    return 0;
}
