#pragma once

#include <chrono>

namespace editor {

/// Long work that is done bit by bit on the event loop. Destroying one that is not finished cancels
/// it.
class SlicedJob
{
public:
    virtual ~SlicedJob() = default;

    /// Goes on for about that long. False when the job is finished then.
    virtual bool advance(std::chrono::nanoseconds time) = 0;
    /// From 0 to 1.
    virtual double progress() const = 0;
};

} // namespace editor
