#pragma once

#include <host/variant/meta_type.h>

#include <functional>
#include <string>

namespace kyr {
class BoundProperty;
}

namespace Meta {

/// Annotation of a property whose value belongs to one scene item: where the predicate answers
/// true, the property and everything below it stay out of copy and paste. The annotation's name
/// is `sceneItemAnnotationName()`.
struct SceneItem
{
    /// Answers true for every property.
    SceneItem();
    explicit SceneItem(std::function<bool(const kyr::BoundProperty&)> test);

    std::function<bool(const kyr::BoundProperty&)> predicate;
};

const std::string& sceneItemAnnotationName();

} // namespace Meta

/// The predicate may capture a lot; copies of a variant share it.
template <>
inline constexpr bool lumo::prefersSharedPayload<Meta::SceneItem> = true;
