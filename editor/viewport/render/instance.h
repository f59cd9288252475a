#pragma once

#include <QColor>
#include <QMatrix4x4>

namespace editor {

/// What the shaders read once for every drawn item: the upper three rows of its transform, its
/// colour and its place in the order of the items, 64 bytes in the layout of the vertex attributes.
struct Instance
{
    float rows[3][4];
    float color[3];
    float place; ///< exact up to 2^24

    Instance(const QMatrix4x4& transform, const QColor& tint, quint32 itsPlace)
        : color{float(tint.redF()), float(tint.greenF()), float(tint.blueF())}
        , place(float(itsPlace))
    {
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 4; ++column)
                rows[row][column] = transform(row, column);
        }
    }
};
static_assert(sizeof(Instance) == 64, "the vertex attributes rely on the layout");

} // namespace editor
