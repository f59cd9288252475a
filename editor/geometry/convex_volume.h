#pragma once

#include <editor/geometry/box.h>
#include <editor/geometry/ray.h>

#include <QVector4D>

#include <vector>

namespace editor {

/// The points on the inner side of every plane: what a rectangle on the screen covers in space.
/// A plane is (normal, offset), and its inner side is where `normal · p + offset >= 0`.
class ConvexVolume
{
public:
    enum class Overlap
    {
        None,
        Partial,
        Full
    };

    void addPlane(const QVector3D& normal, const QVector3D& point);

    bool contains(const QVector3D& point) const;
    /// Never None for a box that meets the volume; may be Partial for a near miss.
    Overlap overlap(const Box& box) const;
    /// Exact: whether any point of the triangle, also one without an area, is in the volume.
    bool meets(const Triangle& triangle) const;

    /// The same volume seen from the space that `transform` maps from. Needs no inverse, so it
    /// holds for flattened and mirrored spaces, too.
    ConvexVolume mappedBack(const QMatrix4x4& transform) const;

private:
    std::vector<QVector4D> m_planes;
};

} // namespace editor
