#pragma once

#include <QFlags>

#include <vector>

namespace editor {

class SceneObject;

/// What of an object changed.
enum class ChangeAspect : unsigned char
{
    Name = 1 << 0,
    /// Its own visibility or the one it has from the objects above it.
    Visibility = 1 << 1,
    /// Its own lock or the one it has from the objects above it.
    Lock = 1 << 2,
    /// Its own transform; everything below it moves along.
    Transform = 1 << 3,
    Material = 1 << 4,
    /// Whether it differs from what the file holds.
    Modified = 1 << 5,
    /// Which children it has, or their order.
    Children = 1 << 6,
    /// Any other property.
    Other = 1 << 7,
};
Q_DECLARE_FLAGS(ChangeAspects, ChangeAspect)
Q_DECLARE_OPERATORS_FOR_FLAGS(ChangeAspects)

struct ObjectChange
{
    SceneObject* object;
    ChangeAspects aspects;
};

/// One entry an object. Siblings that changed together follow each other in row order.
using ObjectChanges = std::vector<ObjectChange>;

} // namespace editor
