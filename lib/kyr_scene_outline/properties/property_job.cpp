#include <kyr_scene_outline/property_job.h>

#include <host/core/stack_tracker.h>

PropertyJob::~PropertyJob() = default;

bool PropertyJob::advance(std::chrono::nanoseconds time)
{
    if (isFinished())
        return false;
    const Zar::StackTrackerScope entry(m_name, "scene_browser_data");
    const Clock::time_point start = Clock::now();
    m_state = State::Failed; // which it stays when something throws
    try {
        m_state = work(start, time);
    } catch (...) {
        takeBack();
        throw;
    }
    return m_state == State::Running;
}

PropertyJob::State PropertyJob::work(Clock::time_point start, std::chrono::nanoseconds time)
{
    const auto isTimeOver = [start, time] { return Clock::now() - start >= time; };
    while (preparation() < 1) {
        if (!prepare())
            return State::Failed;
        if (preparation() < 1 && isTimeOver())
            return State::Running;
    }
    while (m_done < m_count && workOn(m_done)) {
        ++m_done;
        if (m_done < m_count && isTimeOver())
            return State::Running;
    }
    while (wrapUp()) {
        if (isTimeOver())
            return State::Running;
    }
    return finish() ? State::Succeeded : State::Failed;
}

double PropertyJob::progress() const noexcept
{
    // Reading a document takes about a third of a paste.
    constexpr double share = 0.3;
    const double prepared = preparation();
    const double done = m_count > 0 ? double(m_done) / double(m_count) : 0;
    return prepared < 1 ? share * prepared : share + (1 - share) * done;
}

const PropertyPasteReport& PropertyJob::report() const noexcept
{
    static const PropertyPasteReport none;
    return none;
}
