#pragma once

#include <kyr_scene_outline/export.h>
#include <kyr_scene_outline/property_paste_report.h>

#include <chrono>
#include <cstddef>

/// A copy or paste of properties that is worked off bit by bit, so that an editor's window stays
/// live meanwhile: `SceneBrowserData` starts it, and the editor calls `advance` from its event
/// loop.
///
/// Destroying a job that is not finished cancels it. The objects may change between two calls; the
/// selection has to outlive the job. Nothing that the job calls may destroy it.
class KYR_SCENE_OUTLINE_EXPORT PropertyJob
{
public:
    virtual ~PropertyJob();
    PropertyJob(const PropertyJob&) = delete;
    PropertyJob& operator=(const PropertyJob&) = delete;

    /// Goes on for about that long, one object at least. False when the job is finished then.
    bool advance(std::chrono::nanoseconds time);

    bool isFinished() const noexcept { return m_state != State::Running; }
    /// What `copyProperties` or `pasteProperties` returns; false until the job is finished.
    bool hasSucceeded() const noexcept { return m_state == State::Succeeded; }
    std::size_t objectsDone() const noexcept { return m_done; }
    std::size_t objectCount() const noexcept { return m_count; }

protected:
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

    /// False when there is no point in going on with the next object.
    virtual bool workOn(std::size_t object) = 0;
    /// Called once, behind the last object. Whether the job succeeded.
    virtual bool finish() = 0;

    const char* m_name;
    std::size_t m_count;
    std::size_t m_done = 0;
    State m_state = State::Running;
};

/// While a paste is not finished nothing is selected, and its change scope is open: the editor must
/// keep its user from editing and from undo. Cancelling takes back all that was pasted, and brings
/// back the selection; no undo step remains.
class KYR_SCENE_OUTLINE_EXPORT PropertyPasteJob : public PropertyJob
{
public:
    /// What was done so far.
    virtual const PropertyPasteReport& report() const noexcept = 0;

protected:
    using PropertyJob::PropertyJob;
};
