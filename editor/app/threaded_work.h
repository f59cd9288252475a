#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace editor {

/// A function in a thread of its own, which another thread looks after.
class ThreadedWork
{
public:
    /// Told how far the work got, from 0 to 1; answers false to stop it.
    using Progress = std::function<bool(double)>;

    /// Begins. What `work` throws must not leave it.
    explicit ThreadedWork(std::function<void(const Progress&)> work);
    /// Stops the work, and waits until it has noticed.
    ~ThreadedWork();
    ThreadedWork(const ThreadedWork&) = delete;
    ThreadedWork& operator=(const ThreadedWork&) = delete;

    /// Waits so long at most; whether the work has ended.
    bool waitFor(std::chrono::nanoseconds time);
    double progress() const { return m_progress; }

private:
    std::atomic<double> m_progress{0};
    std::atomic<bool> m_isCanceled{false};
    std::mutex m_mutex;
    std::condition_variable m_ended;
    bool m_hasEnded = false;
    std::thread m_thread;
};

} // namespace editor
