#pragma once

#include <mutex>

#if defined(__x86_64__) || defined(__i386__) || defined(_M_X64)
#include <emmintrin.h>
#endif

namespace vex::signal_details {

/// A mutex for sections of some ten nanoseconds. To fall asleep and be woken costs a hundred times
/// that, so a thread that has to wait stays awake for a while.
class WakefulMutex
{
public:
    /// Throws `std::system_error` as `std::mutex` does.
    void lock()
    {
        if (!m_mutex.try_lock())
            wait();
    }

    void unlock() noexcept { m_mutex.unlock(); }

private:
    /// Apart from `lock`, which has to stay small enough to be inlined.
    [[gnu::cold, gnu::noinline]] void wait()
    {
        // Few attempts, far apart: each takes the mutex's cache line from its owner.
        for (int attempt = 0; attempt < 5; ++attempt) {
            for (int step = 0; step < 64; ++step)
                relaxProcessor();
            if (m_mutex.try_lock())
                return;
        }
        m_mutex.lock();
    }

    static void relaxProcessor() noexcept
    {
#if defined(__x86_64__) || defined(__i386__) || defined(_M_X64)
        _mm_pause();
#elif defined(__aarch64__)
        asm volatile("yield");
#endif
    }

    std::mutex m_mutex;
};

} // namespace vex::signal_details
