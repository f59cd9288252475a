#pragma once

#include <kyr_cpp_utils/signal_details/wakeful_mutex.h>

#include <host/core/smart_pointer.h>

namespace vex::signal_details {

class SlotHolderBase;

/// What a slot record knows of its signal: the mutex that guards the slot set, and how to leave it.
class SignalImplBase
{
public:
    SignalImplBase(const SignalImplBase&) = delete;
    SignalImplBase& operator=(const SignalImplBase&) = delete;

    WakefulMutex& mutex() noexcept { return m_mutex; }

    /// Unlinks `slot` from the slot set and hands the set's reference to the caller.
    /// Called with the mutex held.
    virtual Zar::SmartPointer<SlotHolderBase> detachSlot(SlotHolderBase& slot) = 0;

protected:
    SignalImplBase() = default;
    ~SignalImplBase() = default;

private:
    WakefulMutex m_mutex;
};

} // namespace vex::signal_details
