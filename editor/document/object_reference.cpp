#include "object_reference.h"

#include "object_path.h"
#include "scene_document.h"
#include <host/reflection/persistent_object.h>
#include <host/variant/variant_converter.h>

#include <algorithm>

namespace editor {

namespace {

std::vector<SceneDocument*>& documents()
{
    static std::vector<SceneDocument*> added;
    return added;
}

std::string textOf(const kyr::PersistentObject& reference)
{
    const SceneObject* object = sceneObjectOf(reference.object());
    return object && object->document() ? objectPath(*object) : std::string();
}

std::optional<kyr::PersistentObject> referenceOf(std::string_view text)
{
    if (text.empty())
        return kyr::PersistentObject();
    if (documents().empty())
        return std::nullopt;
    SceneObject* object = objectAtPath(*documents().back()->root(), text);
    if (!object)
        return std::nullopt;
    return kyr::PersistentObject(object->reflected());
}

} // namespace

void registerObjectReferences()
{
    static const bool once = [] {
        lumo::VariantConverter::registerTextForm<kyr::PersistentObject>(textOf, referenceOf);
        return true;
    }();
    Q_UNUSED(once)
}

void addReferenceScene(SceneDocument& document)
{
    documents().push_back(&document);
}

void removeReferenceScene(SceneDocument& document)
{
    auto& all = documents();
    all.erase(std::remove(all.begin(), all.end(), &document), all.end());
}

} // namespace editor
