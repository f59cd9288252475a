#pragma once

#include <kyr_scene_outline/export.h>
#include <kyr_scene_outline/property_paste_report.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

/// Which properties take part, by dotted path such as "light.intensity"; empty for all.
using PropertyChoice = std::function<bool(const std::string& path)>;

/// A copy or paste of properties that is worked off bit by bit, so that an editor's window stays
/// live meanwhile: `SceneBrowserData` starts it, and the editor calls `advance` from its event
/// loop.
///
/// From the first value that a paste may set until it is finished nothing is selected, and its
/// change scope is open: the editor must keep its user from editing and from undo. Destroying a job
/// that is not finished cancels it. A paste that is cancelled, or ended by an exception of a
/// callback, takes back all that it did: values and selection are what they were, and no undo step
/// remains. Without a changes controller the job sets the values back itself, with
/// `kyr::SetterFlag::Replay`; an editor with an undo of its own drops what it recorded meanwhile,
/// and keeps the objects that are nested in the targets until the job is gone.
///
/// The objects may change between two calls; the selection has to outlive the job. Nothing that the
/// job calls may destroy it.
class KYR_SCENE_OUTLINE_EXPORT PropertyJob
{
public:
    virtual ~PropertyJob();
    PropertyJob(const PropertyJob&) = delete;
    PropertyJob& operator=(const PropertyJob&) = delete;

    /// Goes on for about that long, a piece at least. False when the job is finished then. What a
    /// callback throws ends the job and is passed on.
    bool advance(std::chrono::nanoseconds time);

    bool isFinished() const noexcept { return m_state != State::Running; }
    /// What `copyProperties` or `pasteProperties` returns; false until the job is finished.
    bool hasSucceeded() const noexcept { return m_state == State::Succeeded; }
    std::size_t objectsDone() const noexcept { return m_done; }
    std::size_t objectCount() const noexcept { return m_count; }
    /// From 0 to 1, reading the clipboard included.
    double progress() const noexcept;
    /// What a paste did so far; all zero for a copy.
    virtual const PropertyPasteReport& report() const noexcept;

protected:
    using Clock = std::chrono::steady_clock;

    /// `name` is the entry on the diagnostic stack while the job works.
    PropertyJob(const char* name, std::size_t objectCount) noexcept
        : m_name(name), m_count(objectCount)
    {}

private:
    enum class State
    {
        Running,
        Succeeded,
        Failed,
    };

    State work(Clock::time_point start, std::chrono::nanoseconds time);

    /// How much of what comes before the first object is done, from 0 to 1.
    virtual double preparation() const noexcept { return 1; }
    /// Goes on with that by one piece. False when there is nothing to do then.
    virtual bool prepare() { return true; }
    /// False when there is no point in going on with the next object.
    virtual bool workOn(std::size_t object) = 0;
    /// Goes on with what comes behind the last object by one piece. False when only `finish` is
    /// left.
    virtual bool wrapUp() { return false; }
    /// Called once, at the end. Whether the job succeeded.
    virtual bool finish() = 0;
    /// Undoes it all, when something threw.
    virtual void takeBack() noexcept {}

    const char* m_name;
    std::size_t m_count;
    std::size_t m_done = 0;
    State m_state = State::Running;
};
