#pragma once

#include <editor/document/components.h>

#include <array>

namespace editor {

// Values as glTF 2 wants them.

/// x, y, z, w of the unit quaternion that turns as `degrees` does; w is not negative.
std::array<double, 4> quaternionOf(const lumo::Vector3& degrees);

/// Whether the quaternion of `degrees` gives the same angles again, to the last bit. Others come
/// back as angles of the same turn: those beyond half a turn, or with y at a quarter turn.
bool keepsAngles(const lumo::Vector3& degrees);

/// Radians from the axis, the inner one below the outer one, which is at most a quarter turn.
struct ConeOfLight
{
    double inner;
    double outer;
};
ConeOfLight coneOf(const LightComponent& light);

/// "directional", "point" or "spot"; area lights are points.
const char* gltfTypeOf(LightType type);

/// Factors are from 0 to 1.
float factorOf(float value);

} // namespace editor
