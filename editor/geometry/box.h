#pragma once

#include <QMatrix4x4>
#include <QVector3D>

#include <algorithm>
#include <cmath>
#include <limits>

namespace editor {

/// Axis-aligned box. Starts empty; a box with a NaN bound counts as empty.
struct Box
{
    static constexpr float infinity = std::numeric_limits<float>::infinity();

    QVector3D lower{infinity, infinity, infinity};
    QVector3D upper{-infinity, -infinity, -infinity};

    bool isEmpty() const
    {
        return !(lower.x() <= upper.x() && lower.y() <= upper.y() && lower.z() <= upper.z());
    }
    QVector3D centre() const { return (lower + upper) * 0.5f; }
    QVector3D size() const { return upper - lower; }
    float radius() const { return isEmpty() ? 0.0f : size().length() * 0.5f; }
    QVector3D corner(int index) const
    {
        return {index & 1 ? upper.x() : lower.x(), index & 2 ? upper.y() : lower.y(),
                index & 4 ? upper.z() : lower.z()};
    }

    void include(const QVector3D& point)
    {
        for (int axis = 0; axis < 3; ++axis) {
            lower[axis] = point[axis] < lower[axis] ? point[axis] : lower[axis];
            upper[axis] = point[axis] > upper[axis] ? point[axis] : upper[axis];
        }
    }
    void include(const Box& other)
    {
        if (!other.isEmpty()) {
            include(other.lower);
            include(other.upper);
        }
    }

    /// The box around the transformed box; `transform` must be affine.
    Box transformed(const QMatrix4x4& transform) const
    {
        if (isEmpty())
            return {};
        const QVector3D middle = transform.map(centre());
        const QVector3D half = size() * 0.5f;
        QVector3D reach;
        for (int axis = 0; axis < 3; ++axis) {
            reach[axis] = std::abs(transform(axis, 0)) * half.x() +
                          std::abs(transform(axis, 1)) * half.y() +
                          std::abs(transform(axis, 2)) * half.z();
        }
        return {middle - reach, middle + reach};
    }
};

} // namespace editor
