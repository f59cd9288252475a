#pragma once

#include <atomic>
#include <cstdint>

namespace Zar {

/// Base of objects that are shared through `SmartPointer`.
/// The count starts at 0 and is changed atomically; the object destroys itself when the count
/// returns to 0.
class SafeReferenceCount
{
public:
    SafeReferenceCount(const SafeReferenceCount&) = delete;
    SafeReferenceCount& operator=(const SafeReferenceCount&) = delete;

    void incRef() const noexcept { m_count.fetch_add(1, std::memory_order_relaxed); }

    /// Returns the count that is left; at 0 the object is gone.
    int decRef() const noexcept
    {
        const std::int32_t left = m_count.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0)
            delete this;
        return left;
    }

    int refCount() const noexcept { return m_count.load(std::memory_order_relaxed); }

protected:
    SafeReferenceCount() noexcept = default;
    virtual ~SafeReferenceCount() = default;

private:
    mutable std::atomic<std::int32_t> m_count{0};
};

} // namespace Zar
