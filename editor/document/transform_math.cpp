#include "transform_math.h"

#include "scene_object.h"

#include <QtMath>

#include <cmath>

namespace editor {

namespace {

QVector3D columnOf(const QMatrix4x4& matrix, int column)
{
    return matrix.column(column).toVector3D();
}

} // namespace

QMatrix4x4 matrixOf(const TransformComponent& transform)
{
    QMatrix4x4 matrix;
    matrix.translate(transform.position.x, transform.position.y, transform.position.z);
    matrix.rotate(transform.rotation.z, 0, 0, 1);
    matrix.rotate(transform.rotation.y, 0, 1, 0);
    matrix.rotate(transform.rotation.x, 1, 0, 0);
    matrix.scale(transform.scale.x, transform.scale.y, transform.scale.z);
    return matrix;
}

void setFromMatrix(TransformComponent& transform, const QMatrix4x4& matrix)
{
    const QVector3D position = columnOf(matrix, 3);
    QVector3D x = columnOf(matrix, 0);
    QVector3D y = columnOf(matrix, 1);
    QVector3D z = columnOf(matrix, 2);
    QVector3D scale(x.length(), y.length(), z.length());
    // A mirrored matrix is a rotation after one axis is turned round.
    if (QVector3D::dotProduct(QVector3D::crossProduct(x, y), z) < 0)
        scale.setX(-scale.x());
    x = scale.x() == 0 ? QVector3D(1, 0, 0) : x / scale.x();
    y = scale.y() == 0 ? QVector3D(0, 1, 0) : y / scale.y();
    z = scale.z() == 0 ? QVector3D(0, 0, 1) : z / scale.z();

    // Entries of Rz * Ry * Rx: sin(y) = -x.z; the rest follows where cos(y) is not 0.
    const float sinY = qBound(-1.0f, -x.z(), 1.0f);
    QVector3D angles(0, std::asin(sinY), 0);
    if (std::abs(sinY) < 0.999999f) {
        angles.setX(std::atan2(y.z(), z.z()));
        angles.setZ(std::atan2(x.y(), x.x()));
    } else {
        angles.setZ(std::atan2(-y.x(), y.y()));
    }
    transform.position = {position.x(), position.y(), position.z()};
    transform.rotation = {qRadiansToDegrees(angles.x()), qRadiansToDegrees(angles.y()),
                          qRadiansToDegrees(angles.z())};
    transform.scale = {scale.x(), scale.y(), scale.z()};
}

lumo::Vector3 nearestRotation(const lumo::Vector3& angles, const lumo::Vector3& reference)
{
    constexpr float full = 360;
    const auto nearest = [](float angle, float to) {
        const float turned = angle + full * std::round((to - angle) / full);
        return std::abs(turned) <= full ? turned : std::remainder(angle, full);
    };
    const auto nearestOf = [&](const lumo::Vector3& a) {
        return lumo::Vector3{nearest(a.x, reference.x), nearest(a.y, reference.y),
                             nearest(a.z, reference.z)};
    };
    const auto distance = [&reference](const lumo::Vector3& a) {
        return std::abs(a.x - reference.x) + std::abs(a.y - reference.y) +
               std::abs(a.z - reference.z);
    };
    // Each rotation about three axes has a second way to say it.
    const lumo::Vector3 one = nearestOf(angles);
    const lumo::Vector3 other = nearestOf({angles.x + 180, 180 - angles.y, angles.z + 180});
    return distance(other) < distance(one) ? other : one;
}

QMatrix4x4 worldTransform(const SceneObject& object)
{
    QMatrix4x4 world;
    for (const SceneObject* at = &object; at; at = at->parent()) {
        if (at->transform())
            world = matrixOf(*at->transform()) * world;
    }
    return world;
}

} // namespace editor
