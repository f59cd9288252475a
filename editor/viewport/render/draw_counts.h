#pragma once

#include <atomic>

namespace editor {

/// What a view has cost so far. Written while drawing, read from any thread.
struct DrawCounts
{
    std::atomic<int> frames{0}; ///< times the picture was put together
    std::atomic<int> scenes{0}; ///< times that the items were drawn for it
    std::atomic<int> listed{0}; ///< items that were made ready for drawing or for an outline
};

} // namespace editor
