#pragma once

#include <editor/geometry/box.h>

#include <array>
#include <optional>

namespace editor {

/// Distances along a ray are in units of `direction`, which need not be of length one.
struct Ray
{
    QVector3D origin;
    QVector3D direction;

    QVector3D at(float distance) const { return origin + direction * distance; }
};

using Triangle = std::array<QVector3D, 3>;

/// Where the ray enters the box (0 when it starts inside), if it does so before `limit`.
inline std::optional<float> entryDistance(const Ray& ray, const Box& box, float limit)
{
    if (box.isEmpty())
        return std::nullopt;
    float nearest = 0.0f;
    float farthest = limit;
    for (int axis = 0; axis < 3; ++axis) {
        const float origin = ray.origin[axis];
        const float direction = ray.direction[axis];
        if (direction == 0.0f) {
            if (origin < box.lower[axis] || origin > box.upper[axis])
                return std::nullopt;
            continue;
        }
        float enter = (box.lower[axis] - origin) / direction;
        float leave = (box.upper[axis] - origin) / direction;
        if (enter > leave)
            std::swap(enter, leave);
        // Rounding must not lose a flat box or a triangle that lies in the face of one.
        leave += std::abs(leave) * 4.0f * std::numeric_limits<float>::epsilon();
        enter -= std::abs(enter) * 4.0f * std::numeric_limits<float>::epsilon();
        nearest = std::max(nearest, enter);
        farthest = std::min(farthest, leave);
    }
    return nearest <= farthest ? std::optional<float>(nearest) : std::nullopt;
}

/// Where the ray meets the triangle, from either side; nothing for a triangle without an area.
/// After Möller and Trumbore, "Fast, Minimum Storage Ray/Triangle Intersection", 1997.
inline std::optional<float> hitDistance(const Ray& ray, const Triangle& triangle)
{
    const QVector3D edge1 = triangle[1] - triangle[0];
    const QVector3D edge2 = triangle[2] - triangle[0];
    const QVector3D p = QVector3D::crossProduct(ray.direction, edge2);
    const float determinant = QVector3D::dotProduct(edge1, p);
    if (determinant == 0.0f || !std::isfinite(determinant))
        return std::nullopt;
    const float inverse = 1.0f / determinant;
    const QVector3D s = ray.origin - triangle[0];
    const float u = QVector3D::dotProduct(s, p) * inverse;
    if (!(u >= 0.0f && u <= 1.0f))
        return std::nullopt;
    const QVector3D q = QVector3D::crossProduct(s, edge1);
    const float v = QVector3D::dotProduct(ray.direction, q) * inverse;
    if (!(v >= 0.0f && u + v <= 1.0f))
        return std::nullopt;
    const float distance = QVector3D::dotProduct(edge2, q) * inverse;
    return distance >= 0.0f ? std::optional<float>(distance) : std::nullopt;
}

} // namespace editor
