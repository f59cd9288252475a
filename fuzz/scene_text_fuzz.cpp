// Feeds bytes to the editor as if objects had been found on the clipboard, or opened as a scene in
// the bundled format: they are refused with a reason or are objects, and then ones that can be
// written and read again.
#include <editor/files/object_text.h>

#include <QLoggingCategory>

#include <cstdint>
#include <cstdlib>

namespace {

using namespace editor;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

ObjectsOfText read(const QByteArray& text)
{
    ObjectsOfText objects = objectsOfText(text, [](double) { return true; });
    require(objects.error.isEmpty() != objects.copied.empty());
    return objects;
}

QByteArray textOf(const std::vector<CopiedObjects>& copied)
{
    const SceneObjectPtr scene = SceneObject::create(ObjectKind::Scene, "Fuzz");
    for (const CopiedObjects& family : copied) {
        for (const SceneObjectPtr& object : family.objects)
            scene->append(object);
    }
    const ObjectText written = textOfScene(scene);
    require(written.error.isEmpty() != written.text.isEmpty());
    return written.text;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ObjectsOfText objects = read(QByteArray(reinterpret_cast<const char*>(data), int(size)));
    if (objects.copied.empty())
        return 0;
    const QByteArray written = textOf(objects.copied);
    if (!written.isEmpty())
        require(textOf(read(written).copied) == written);
    return 0;
}
