#include <host/variant/scene_item.h>

#include "bound_property.h"
#include "fuzzy_function.h"

namespace Meta {
namespace {

template <typename Callable>
using PropertyPredicate = kyr::FuzzyArgumentsAdaptor<bool(const kyr::BoundProperty&), Callable,
                                                     kyr::BoundPropertyArgumentConvertor>;

template <typename Callable>
PropertyPredicate<Callable> propertyPredicate(Callable callable)
{
    return PropertyPredicate<Callable>(std::move(callable));
}

// Described from the moment the library is loaded.
[[maybe_unused]] const lumo::MetaType& itemType = lumo::metaTypeOf<SceneItem>();
[[maybe_unused]] const lumo::MetaType& itemPointerType = lumo::metaTypeOf<const SceneItem*>();

} // namespace

SceneItem::SceneItem() : predicate(propertyPredicate([answer = true] { return answer; })) {}

SceneItem::SceneItem(std::function<bool(const kyr::BoundProperty&)> test)
    : predicate(std::move(test))
{}

const std::string& sceneItemAnnotationName()
{
    return lumo::metaTypeOf<SceneItem>().name();
}

} // namespace Meta
