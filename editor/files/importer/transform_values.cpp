#include "transform_values.h"

#include <QtMath>

#include <cmath>

namespace editor {

namespace {

// Below this, x and z turn about the same axis as far as a double can tell.
constexpr double smallestCosine = 1e-7;

bool areFinite(const lumo::Vector3& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

float degrees(double radians)
{
    return float(qRadiansToDegrees(radians));
}

} // namespace

lumo::Vector3 anglesFromQuaternion(const std::array<double, 4>& quaternion)
{
    auto [x, y, z, w] = quaternion;
    const double length = std::sqrt(x * x + y * y + z * z + w * w);
    if (length == 0)
        return {};
    x /= length;
    y /= length;
    z /= length;
    w /= length;
    // Entries of Rz * Ry * Rx: the third row is -sin(y), cos(y) sin(x), cos(y) cos(x).
    const double sinY = 2 * (w * y - x * z);
    const double sinX = 2 * (y * z + w * x);
    const double cosX = 1 - 2 * (x * x + y * y);
    const double cosY = std::hypot(sinX, cosX);
    const double angleY = std::atan2(sinY, cosY);
    if (cosY < smallestCosine)
        return {0, degrees(angleY),
                degrees(std::atan2(2 * (w * z - x * y), 1 - 2 * (x * x + z * z)))};
    return {degrees(std::atan2(sinX, cosX)), degrees(angleY),
            degrees(std::atan2(2 * (x * y + w * z), 1 - 2 * (y * y + z * z)))};
}

bool isFinite(const TransformComponent& transform)
{
    return areFinite(transform.position) && areFinite(transform.rotation) &&
           areFinite(transform.scale);
}

} // namespace editor
