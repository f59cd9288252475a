#include "gltf_values.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr double smallestCone = 1e-4;
constexpr double largestInnerShare = 0.9999;

using Quaternion = std::array<double, 4>;

Quaternion turn(double degrees, int axis)
{
    const double half = qDegreesToRadians(degrees) / 2;
    Quaternion quaternion{0, 0, 0, std::cos(half)};
    quaternion[std::size_t(axis)] = std::sin(half);
    return quaternion;
}

Quaternion product(const Quaternion& a, const Quaternion& b)
{
    return {a[3] * b[0] + a[0] * b[3] + a[1] * b[2] - a[2] * b[1],
            a[3] * b[1] - a[0] * b[2] + a[1] * b[3] + a[2] * b[0],
            a[3] * b[2] + a[0] * b[1] - a[1] * b[0] + a[2] * b[3],
            a[3] * b[3] - a[0] * b[0] - a[1] * b[1] - a[2] * b[2]};
}

} // namespace

std::array<double, 4> quaternionOf(const lumo::Vector3& degrees)
{
    Quaternion result =
        product(turn(degrees.z, 2), product(turn(degrees.y, 1), turn(degrees.x, 0)));
    if (result[3] < 0) {
        for (double& component : result)
            component = -component;
    }
    return result;
}

bool keepsAngles(const lumo::Vector3& degrees)
{
    return std::abs(degrees.x) < 180 && std::abs(degrees.y) < 90 && std::abs(degrees.z) < 180;
}

ConeOfLight coneOf(const LightComponent& light)
{
    const double outer =
        std::clamp(qDegreesToRadians(double(light.outerAngle)), smallestCone, M_PI_2);
    const double inner =
        std::clamp(qDegreesToRadians(double(light.innerAngle)), 0.0, outer * largestInnerShare);
    return {inner, outer};
}

const char* gltfTypeOf(LightType type)
{
    switch (type) {
    case LightType::Directional:
        return "directional";
    case LightType::Spot:
        return "spot";
    case LightType::Point:
    case LightType::Area:
        break;
    }
    return "point";
}

float factorOf(float value)
{
    return std::clamp(value, 0.0f, 1.0f);
}

} // namespace editor
