#pragma once

#include <kyr_cpp_utils/connection.h>
#include <kyr_cpp_utils/optional_last_value.h>
#include <kyr_cpp_utils/signal_details/signal_impl.h>

#include <atomic>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace vex {

/// A set of callbacks of one signature; see the specialisation.
template <typename Signature>
class Signal;

/// A set of callbacks that are called in order when the signal is emitted.
///
///     vex::Signal<void(int)> changed;
///     vex::Connection connection = changed.connect([](int value) { ... });
///     changed(7);
///
/// One pointer wide; costs nothing until the first connection. Connect, disconnect and emit may run
/// on different threads at once. A callback may connect, disconnect, emit and destroy the signal:
/// - a slot connected during an emission is first called by the next one; one connected during or
///   after an emission that is nested in another may still be called by the outer one,
/// - a slot disconnected before the emission reaches it is not called,
/// - an emission whose signal is destroyed ends when the running callback returns.
///
/// Emission allocates nothing. Exceptions of a callback end the emission and reach the emitter.
template <typename R, typename... Args>
class Signal<R(Args...)>
{
    static_assert(!(std::is_rvalue_reference_v<Args> || ...),
                  "several slots share the arguments, none of them may consume one");

public:
    using Combiner = OptionalLastValue<R>;

    Signal() noexcept = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    /// Disconnects every slot. Handles stay valid. Nobody may start to use the signal any more;
    /// disconnecting on other threads is fine.
    ~Signal()
    {
        // A callable that is destroyed here may connect again.
        while (Impl* impl = m_impl.exchange(nullptr, std::memory_order_acq_rel))
            impl->abandon();
    }

    /// Adds a slot that holds a copy of `callable`. Slots are called by ascending `orderKey`, those
    /// with equal keys in the order of connection. Costs one allocation.
    template <typename Callable>
    [[nodiscard]] Connection connect(Callable&& callable, std::int32_t orderKey = 0)
    {
        static_assert(std::is_invocable_r_v<R, std::decay_t<Callable>&, Args...>,
                      "the callable does not fit the signal's signature");
        return Connection(impl().connect(std::forward<Callable>(callable), orderKey));
    }

    /// Emits: calls the slots on this thread. Returns an `std::optional` of the last slot's result
    /// unless the result is void.
    typename Combiner::Result operator()(Args... args) const
    {
        Impl* impl = m_impl.load(std::memory_order_acquire);
        if (impl && impl->hasSlots())
            return impl->callSlots(args...);
        return typename Combiner::Result();
    }

private:
    using Impl = signal_details::SignalImpl<R(Args...), Combiner>;

    Impl& impl();

    std::atomic<Impl*> m_impl{nullptr};

    static_assert(sizeof(std::atomic<Impl*>) == sizeof(void*));
};

template <typename R, typename... Args>
auto Signal<R(Args...)>::impl() -> Impl&
{
    if (Impl* existing = m_impl.load(std::memory_order_acquire))
        return *existing;
    auto* created = new Impl;
    Impl* installed = nullptr;
    if (m_impl.compare_exchange_strong(installed, created, std::memory_order_acq_rel))
        return *created;
    created->abandon();
    return *installed;
}

} // namespace vex
