#include "threaded_work.h"

namespace editor {

ThreadedWork::ThreadedWork(std::function<void(const Progress&)> work)
    : m_thread([this, work = std::move(work)] {
        work([this](double progress) {
            m_progress = progress;
            return !m_isCanceled;
        });
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_hasEnded = true;
        m_ended.notify_all();
    })
{}

ThreadedWork::~ThreadedWork()
{
    m_isCanceled = true;
    m_thread.join();
}

bool ThreadedWork::waitFor(std::chrono::nanoseconds time)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_ended.wait_for(lock, time, [this] { return m_hasEnded; });
}

} // namespace editor
