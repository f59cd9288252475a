#pragma once

#include <editor/geometry/mesh_geometry.h>

#include <QColor>
#include <QMatrix4x4>

namespace editor {

/// Items that follow each other, by their places. These are numbers that grow in the order of the
/// items and leave room for others in between.
struct ItemRange
{
    quint32 first = 0;
    quint32 end = 0; ///< behind the last one

    bool isEmpty() const { return first >= end; }
    bool meets(const ItemRange& other) const { return first < other.end && other.first < end; }
};

/// What the viewport knows of an object.
struct ViewportItem
{
    enum class Kind
    {
        Mesh,
        Light,
        Camera,
        Group
    };

    quint32 id = 0; ///< unique, never 0
    Kind kind = Kind::Mesh;
    MeshGeometryPtr geometry; ///< without one, a light or camera shows as a marker, others not
    QMatrix4x4 transform;     ///< to the world; affine
    QColor color = Qt::lightGray;
    bool visible = true;
    bool pickable = true;    ///< false when locked: neither picked nor hovered nor rubber-banded
    quint32 descendants = 0; ///< how many of the items that follow are below it in the tree

    bool isMesh() const { return geometry != nullptr; }
    bool isMarker() const { return !geometry && (kind == Kind::Light || kind == Kind::Camera); }
    QVector3D origin() const { return transform.column(3).toVector3D(); }

    /// In the world; a point for an item without geometry.
    Box bounds() const
    {
        if (geometry)
            return geometry->bounds().transformed(transform);
        return {origin(), origin()};
    }
};

} // namespace editor
