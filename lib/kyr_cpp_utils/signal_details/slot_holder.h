#pragma once

#include <kyr_cpp_utils/signal_details/signal_impl_base.h>

#include <host/core/debug_message.h>
#include <host/core/safe_reference_count.h>
#include <host/core/smart_pointer.h>

#include <boost/intrusive/set_hook.hpp>

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>

namespace vex::signal_details {

/// One connection of a signal, shared by the signal's slot set and the `vex::Connection`.
///
/// The state word counts pins (emissions that stand on the record) and carries the disconnected
/// bit, which is never cleared. A disconnected record takes no new pin, so exactly one thread makes
/// the word "disconnected, no pins". That thread finalizes the record: it takes it out of the slot
/// set, destroys the callable, which by then nobody runs or will run, and drops the set's
/// reference. Until then that reference keeps a pinned record alive, also after the signal is gone.
class SlotHolderBase : public Zar::SafeReferenceCount, public boost::intrusive::set_base_hook<>
{
public:
    std::int32_t orderKey() const noexcept { return m_orderKey; }

    /// The signal the record is attached to; null from the moment somebody set out to detach it.
    SignalImplBase* signal() const noexcept { return m_signal.load(std::memory_order_acquire); }

    /// Makes the caller the one who detaches the record. Returns null when somebody else is.
    SignalImplBase* takeSignal() noexcept
    {
        return m_signal.exchange(nullptr, std::memory_order_acq_rel);
    }

    bool isConnected() const noexcept
    {
        return !(m_state.load(std::memory_order_acquire) & disconnectedBit);
    }

    /// The emission generation the record was connected in. Guarded by the signal's mutex.
    std::uint64_t connectGeneration() const noexcept { return m_connectGeneration; }
    void setConnectGeneration(std::uint64_t value) noexcept { m_connectGeneration = value; }

    /// Pins the record unless it is disconnected. Called with the signal's mutex held.
    bool tryPin() noexcept
    {
        std::uint64_t state = m_state.load(std::memory_order_relaxed);
        do {
            if (state & disconnectedBit)
                return false;
        } while (!m_state.compare_exchange_weak(state, state + 1, std::memory_order_acquire,
                                                std::memory_order_relaxed));
        return true;
    }

    /// Gives a pin back; the last one of a disconnected record finalizes it. Never called with the
    /// signal's mutex held. The record may be gone afterwards.
    void unpin()
    {
        if (m_state.fetch_sub(1, std::memory_order_acq_rel) == disconnectedBit + 1)
            finalize();
    }

    /// Sets the disconnected bit and returns true when the caller has to finalize the record.
    [[nodiscard]] bool markDisconnected() noexcept
    {
        return m_state.fetch_or(disconnectedBit, std::memory_order_acq_rel) == 0;
    }

    /// Detaches the record, unless the end of the signal did, destroys its callable and drops the
    /// slot set's reference.
    void finalize()
    {
        Zar::SmartPointer<SlotHolderBase> setReference;
        if (SignalImplBase* signal = takeSignal()) {
            const std::lock_guard lock(signal->mutex());
            setReference = signal->detachSlot(*this);
        } else {
            setReference = {this, Zar::AdoptReference()};
        }
        releaseCallable();
    }

    /// Destroys the callable, if there still is one.
    virtual void releaseCallable() = 0;

protected:
    SlotHolderBase(SignalImplBase& signal, std::int32_t orderKey) noexcept
        : m_signal(&signal), m_orderKey(orderKey)
    {}

    // Reports are searched for this name and number, which stay, wherever the line is.
    ~SlotHolderBase() override { Zar::verify(!signal(), "!signal()", "kyr_cpp_utils/signal", 113); }

private:
    static constexpr std::uint64_t disconnectedBit = std::uint64_t(1) << 63;

    std::atomic<std::uint64_t> m_state{0};
    std::uint64_t m_connectGeneration = 0;
    std::atomic<SignalImplBase*> m_signal;
    const std::int32_t m_orderKey;
};

template <typename Signature>
class SlotHolder;

/// A record that can be called with the signal's arguments.
template <typename R, typename... Args>
class SlotHolder<R(Args...)> : public SlotHolderBase
{
public:
    virtual R call(Args... args) = 0;

protected:
    using SlotHolderBase::SlotHolderBase;
};

template <typename Signature, typename Callable>
class RegularSlotHolder;

/// Keeps the callable in the record itself, so a connection costs one allocation.
template <typename R, typename... Args, typename Callable>
class RegularSlotHolder<R(Args...), Callable> final : public SlotHolder<R(Args...)>
{
public:
    template <typename Source>
    RegularSlotHolder(SignalImplBase& signal, std::int32_t orderKey, Source&& callable)
        : SlotHolder<R(Args...)>(signal, orderKey)
        , m_callable(std::in_place, std::forward<Source>(callable))
    {}

    void releaseCallable() override { m_callable.reset(); }

    /// Throws `std::bad_optional_access` once the callable is released.
    R call(Args... args) override
    {
        Callable& callable = m_callable.value();
        if constexpr (std::is_void_v<R>)
            std::invoke(callable, std::forward<Args>(args)...);
        else
            return std::invoke(callable, std::forward<Args>(args)...);
    }

private:
    ~RegularSlotHolder() override = default;

    std::optional<Callable> m_callable;
};

} // namespace vex::signal_details
