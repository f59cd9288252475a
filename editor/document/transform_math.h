#pragma once

#include <editor/document/components.h>

#include <QMatrix4x4>

namespace editor {

class SceneObject;

QMatrix4x4 matrixOf(const TransformComponent& transform);
/// The position, rotation and scale whose matrix comes nearest to `matrix`; equal to it unless it
/// is sheared or projects.
void setFromMatrix(TransformComponent& transform, const QMatrix4x4& matrix);

/// The same rotation as `angles`, in the figures that come nearest to `reference`; degrees.
lumo::Vector3 nearestRotation(const lumo::Vector3& angles, const lumo::Vector3& reference);

/// From the object's coordinates to the world's. Linear in depth.
QMatrix4x4 worldTransform(const SceneObject& object);

} // namespace editor
