#include <kyr_scene_outline/property_job.h>

#include <host/core/stack_tracker.h>

PropertyJob::~PropertyJob() = default;

bool PropertyJob::advance(std::chrono::nanoseconds time)
{
    if (isFinished())
        return false;
    const Zar::StackTrackerScope entry(m_name, "scene_browser_data");
    const auto start = std::chrono::steady_clock::now();
    m_state = State::Failed; // which it stays when something throws
    while (m_done < m_count && workOn(m_done)) {
        ++m_done;
        if (m_done < m_count && std::chrono::steady_clock::now() - start >= time) {
            m_state = State::Running;
            return true;
        }
    }
    if (finish())
        m_state = State::Succeeded;
    return false;
}
