#pragma once

#include <editor/geometry/box.h>

namespace editor {

/// Whether a camera can be placed before the box: further out, a float tells no near places apart,
/// and what is computed from them overflows.
inline bool isInFrameReach(const Box& box)
{
    constexpr float reach = 1e9f;
    for (int axis = 0; axis < 3; ++axis) {
        if (!(box.lower[axis] >= -reach && box.upper[axis] <= reach))
            return false;
    }
    return true;
}

} // namespace editor
