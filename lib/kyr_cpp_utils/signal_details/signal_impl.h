#pragma once

#include <kyr_cpp_utils/signal_details/slot_holder.h>

#include <host/core/smart_pointer.h>

#include <boost/intrusive/set.hpp>

#include <atomic>
#include <cstdint>
#include <iterator>
#include <mutex>
#include <thread>
#include <tuple>
#include <type_traits>
#include <utility>

namespace vex::signal_details {

struct OrderKeyOf
{
    using type = std::int32_t;
    type operator()(const SlotHolderBase& slot) const noexcept { return slot.orderKey(); }
};

template <typename Signature, typename Combiner>
class SignalImpl;

/// The shared part of a signal: created by the first connection, given up by `abandon`.
///
/// The mutex guards the slot set, the generations and the emission count. No callable runs or is
/// destroyed while it is held.
template <typename R, typename... Args, typename Combiner>
class SignalImpl<R(Args...), Combiner> final : public SignalImplBase
{
public:
    template <typename Callable>
    Zar::SmartPointer<SlotHolderBase> connect(Callable&& callable, std::int32_t orderKey)
    {
        using Holder = RegularSlotHolder<R(Args...), std::decay_t<Callable>>;
        Zar::SmartPointer<SlotHolderBase> slot(
            new Holder(*this, orderKey, std::forward<Callable>(callable)));
        const std::lock_guard lock(mutex());
        slot->setConnectGeneration(m_emissionGeneration);
        attach(*slot);
        return slot;
    }

    /// False while no slot is connected. Needs no lock: a connection that is not yet known here was
    /// made too late for an emission that begins now.
    bool hasSlots() const noexcept { return m_hasSlots.load(std::memory_order_acquire); }

    typename Combiner::Result callSlots(Args&... args)
    {
        Emission emission(*this, args...);
        return Combiner()(emission);
    }

    Zar::SmartPointer<SlotHolderBase> detachSlot(SlotHolderBase& slot) override
    {
        m_slots.erase(m_slots.iterator_to(slot));
        m_hasSlots.store(!m_slots.empty(), std::memory_order_release);
        return {&slot, Zar::AdoptReference()};
    }

    /// Disconnects every slot and frees the object: now, or when the last running emission ends.
    void abandon();

private:
    class Emission;
    using SlotSet =
        boost::intrusive::multiset<SlotHolderBase, boost::intrusive::key_of_value<OrderKeyOf>>;
    using Position = typename SlotSet::iterator;

    ~SignalImpl() = default;

    /// Puts `slot` behind every slot whose key is not greater.
    void attach(SlotHolderBase& slot) noexcept
    {
        slot.incRef();
        if (m_slots.empty() || m_slots.rbegin()->orderKey() <= slot.orderKey())
            m_slots.push_back(slot);
        else
            m_slots.insert(slot);
        m_hasSlots.store(true, std::memory_order_release);
    }

    /// Pins the first slot from `position` on that `generation` may call; null when there is none.
    SlotHolderBase* pinEligible(Position position, std::uint64_t generation) noexcept
    {
        for (; position != m_slots.end(); ++position) {
            if (position->connectGeneration() != generation && position->tryPin())
                return &*position;
        }
        return nullptr;
    }

    /// Disconnects the first slot and unlocks. Another thread may be about to detach that slot, and
    /// needs this object for it: then the slot is left to that thread.
    void endFirstSlot(std::unique_lock<WakefulMutex>& lock);

    SlotSet m_slots;
    std::uint64_t m_emissionGeneration = 0;
    std::uint32_t m_runningEmissions = 0;
    std::atomic<bool> m_hasSlots{false};
    bool m_abandoned = false;
};

/// A walk over the slots that were connected when it began. Stands on one pinned slot at a time;
/// a pinned slot stays in the slot set, so its successor is found even after it was disconnected.
template <typename R, typename... Args, typename Combiner>
class SignalImpl<R(Args...), Combiner>::Emission
{
public:
    Emission(SignalImpl& signal, Args&... args) : m_signal(signal), m_arguments(args...)
    {
        const std::lock_guard lock(signal.mutex());
        if (signal.m_slots.empty())
            return;
        m_generation = ++signal.m_emissionGeneration;
        m_current = signal.pinEligible(signal.m_slots.begin(), m_generation);
        if (m_current)
            ++signal.m_runningEmissions;
    }

    Emission(const Emission&) = delete;
    Emission& operator=(const Emission&) = delete;

    ~Emission()
    {
        if (m_current)
            leaveTo([] { return nullptr; });
    }

    explicit operator bool() const noexcept { return m_current != nullptr; }

    R call()
    {
        const auto callCurrent = [this](Args&... args) -> R {
            return static_cast<SlotHolder<R(Args...)>*>(m_current)->call(args...);
        };
        return std::apply(callCurrent, m_arguments);
    }

    void advance()
    {
        leaveTo([this]() -> SlotHolderBase* {
            // Only the end of the signal takes a pinned slot out of the set.
            if (!m_current->is_linked())
                return nullptr;
            const auto position = m_signal.m_slots.iterator_to(*m_current);
            return m_signal.pinEligible(std::next(position), m_generation);
        });
    }

private:
    /// Leaves the current slot for the one that `next` pins under the lock. Without one the
    /// emission is over, and the last emission of an abandoned signal frees it.
    template <typename Next>
    void leaveTo(const Next& next)
    {
        SlotHolderBase* left = m_current;
        bool frees = false;
        {
            const std::lock_guard lock(m_signal.mutex());
            m_current = next();
            if (!m_current)
                frees = --m_signal.m_runningEmissions == 0 && m_signal.m_abandoned;
        }
        left->unpin();
        if (frees)
            delete &m_signal;
    }

    SignalImpl& m_signal;
    std::tuple<Args&...> m_arguments;
    std::uint64_t m_generation = 0;
    SlotHolderBase* m_current = nullptr;
};

template <typename R, typename... Args, typename Combiner>
void SignalImpl<R(Args...), Combiner>::endFirstSlot(std::unique_lock<WakefulMutex>& lock)
{
    // Keeps the slot while it is detached: whoever finalizes it drops the set's reference.
    const Zar::SmartPointer<SlotHolderBase> slot(&*m_slots.begin());
    const bool finalizes = slot->markDisconnected();
    const bool detaches = slot->takeSignal();
    if (detaches)
        static_cast<void>(detachSlot(*slot).release());
    lock.unlock();
    if (finalizes)
        slot->finalize();
    else if (!detaches)
        std::this_thread::yield();
}

template <typename R, typename... Args, typename Combiner>
void SignalImpl<R(Args...), Combiner>::abandon()
{
    std::unique_lock lock(mutex());
    while (!m_slots.empty()) {
        endFirstSlot(lock);
        lock.lock();
    }
    m_abandoned = true;
    const bool frees = m_runningEmissions == 0;
    lock.unlock();
    if (frees)
        delete this;
}

} // namespace vex::signal_details
