#pragma once

#include <kyr_cpp_utils/signal_details/slot_holder.h>

#include <host/core/smart_pointer.h>

#include <utility>

namespace vex {

/// A subscription to a signal. Ends it when disconnected or destroyed; keep it as long as the calls
/// are wanted. One pointer wide, move-only, may outlive the signal.
///
/// One handle belongs to one thread at a time; different handles of one signal may be used on
/// different threads, also while the signal is emitted.
class [[nodiscard]] Connection
{
public:
    /// An empty handle, which names no subscription.
    Connection() noexcept = default;

    /// Takes over the reference to `slot`. For signals only.
    explicit Connection(Zar::SmartPointer<signal_details::SlotHolderBase> slot) noexcept
        : m_slot(std::move(slot))
    {}

    Connection(Connection&& other) noexcept = default;

    /// Ends the subscription held so far, after taking over the other one.
    Connection& operator=(Connection&& other) noexcept
    {
        Connection taken(std::move(other));
        std::swap(m_slot, taken.m_slot);
        return *this;
    }

    ~Connection() { disconnect(); }

    /// False for an empty handle and after the signal was destroyed.
    bool isConnected() const noexcept { return m_slot && m_slot->isConnected(); }

    /// Ends the subscription and leaves the handle empty.
    ///
    /// The callable is destroyed before this returns, on this thread, unless it is running: then it
    /// runs to its end and the emission destroys it. Re-entrant: the callable's destructor may use
    /// the signal, and may destroy this handle.
    void disconnect()
    {
        const auto slot = std::move(m_slot);
        if (slot && slot->markDisconnected())
            slot->finalize();
    }

private:
    Zar::SmartPointer<signal_details::SlotHolderBase> m_slot;
};

static_assert(sizeof(Connection) == sizeof(void*));

} // namespace vex
