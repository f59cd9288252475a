#include "object_values.h"

#include <host/variant/scene_item.h>
#include <host/variant/variant_converter.h>

namespace kyr::testkit {
namespace {

/// Properties that show in neither of these ways are neither copied nor pasted.
constexpr unsigned copiedVisibility = 0x3;

bool isSceneItem(const BoundProperty& property)
{
    const auto annotation = property.annotations().find(Meta::sceneItemAnnotationName());
    return annotation.isValid() &&
           annotation.get()->cast<const Meta::SceneItem*>()->predicate(property);
}

void collect(const ReflectedObject& object, const std::string& prefix, Values& values)
{
    for (std::size_t i = 0; i < object.propertyCount(); ++i) {
        const BoundProperty property = object.propertyAt(i);
        if (!property.isValid() || isSceneItem(property))
            continue;
        const std::string path = prefix + property.name();
        Value value{property.propertyType().name(), {}, false};
        if (const ReflectedObject nested(property); nested.isValid()) {
            collect(nested, path + ".", values);
        } else if (property.isValue() && (property.visibility().bits() & copiedVisibility) != 0 &&
                   lumo::VariantConverter::toText(property.get(), value.text)) {
            value.isWritable = !property.isConst() && !property.isReadOnly();
            values.emplace(path, value);
        }
    }
}

} // namespace

Values valuesOf(const ReflectedObject& object)
{
    Values values;
    collect(object, {}, values);
    return values;
}

std::vector<Values> valuesOf(const Objects& objects)
{
    std::vector<Values> all;
    for (const PersistentObject& object : objects)
        all.push_back(valuesOf(object.object()));
    return all;
}

Values pasted(Values target, const Values& source)
{
    for (auto& [path, value] : target) {
        const auto stored = source.find(path);
        if (stored != source.end() && value.isWritable && stored->second.type == value.type)
            value.text = stored->second.text;
    }
    return target;
}

} // namespace kyr::testkit
