#include "property_walk.h"

#include <host/variant/scene_item.h>

namespace kyr::properties {

std::string propertyPath(std::string prefix, const BoundProperty& property)
{
    if (!prefix.empty())
        prefix += '.';
    prefix += property.name();
    return prefix;
}

bool isSceneItemProperty(const BoundProperty& property)
{
    const Annotations::untyped_iterator annotation =
        property.annotations().find(Meta::sceneItemAnnotationName());
    if (!annotation.isValid())
        return false;
    const auto* item = annotation.get()->cast<const Meta::SceneItem*>();
    return item && item->predicate(property);
}

} // namespace kyr::properties
