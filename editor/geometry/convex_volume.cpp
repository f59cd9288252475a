#include "convex_volume.h"

namespace editor {

namespace {

float side(const QVector4D& plane, const QVector3D& point)
{
    return QVector3D::dotProduct(plane.toVector3D(), point) + plane.w();
}

using Polygon = std::vector<QVector3D>;

// One step of Sutherland and Hodgman's polygon clipping.
void clip(const Polygon& polygon, const QVector4D& plane, Polygon& kept)
{
    kept.clear();
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const QVector3D& from = polygon[i];
        const QVector3D& to = polygon[(i + 1) % polygon.size()];
        const float fromSide = side(plane, from);
        const float toSide = side(plane, to);
        if (fromSide >= 0.0f)
            kept.push_back(from);
        if ((fromSide < 0.0f && toSide > 0.0f) || (fromSide > 0.0f && toSide < 0.0f))
            kept.push_back(from + (to - from) * (fromSide / (fromSide - toSide)));
    }
}

} // namespace

void ConvexVolume::addPlane(const QVector3D& normal, const QVector3D& point)
{
    const QVector3D unit = normal.normalized();
    m_planes.push_back(QVector4D(unit, -QVector3D::dotProduct(unit, point)));
}

bool ConvexVolume::contains(const QVector3D& point) const
{
    return std::all_of(m_planes.begin(), m_planes.end(),
                       [&](const QVector4D& plane) { return side(plane, point) >= 0.0f; });
}

ConvexVolume::Overlap ConvexVolume::overlap(const Box& box) const
{
    if (box.isEmpty())
        return Overlap::None;
    Overlap result = Overlap::Full;
    for (const QVector4D& plane : m_planes) {
        QVector3D innermost;
        QVector3D outermost;
        for (int axis = 0; axis < 3; ++axis) {
            const bool positive = plane[axis] >= 0.0f;
            innermost[axis] = positive ? box.upper[axis] : box.lower[axis];
            outermost[axis] = positive ? box.lower[axis] : box.upper[axis];
        }
        if (side(plane, innermost) < 0.0f)
            return Overlap::None;
        if (!(side(plane, outermost) >= 0.0f))
            result = Overlap::Partial;
    }
    return result;
}

bool ConvexVolume::meets(const Triangle& triangle) const
{
    Polygon polygon(triangle.begin(), triangle.end());
    Polygon kept;
    for (const QVector4D& plane : m_planes) {
        clip(polygon, plane, kept);
        if (kept.empty())
            return false;
        polygon.swap(kept);
    }
    return true;
}

ConvexVolume ConvexVolume::mappedBack(const QMatrix4x4& transform) const
{
    const QMatrix4x4 transposed = transform.transposed();
    ConvexVolume result;
    result.m_planes.reserve(m_planes.size());
    for (const QVector4D& plane : m_planes)
        result.m_planes.push_back(transposed * plane);
    return result;
}

} // namespace editor
