#pragma once

#include <editor/document/components.h>

#include <array>

namespace editor {

/// Degrees, as `TransformComponent::rotation` has them, of a quaternion x, y, z, w of any length.
/// Worked out in double precision, so that angles written as a quaternion of doubles come back.
lumo::Vector3 anglesFromQuaternion(const std::array<double, 4>& quaternion);

bool isFinite(const TransformComponent& transform);

} // namespace editor
