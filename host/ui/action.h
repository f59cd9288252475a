#pragma once

#include <host/reflection/fuzzy_function.h>
#include <host/ui/action_info.h>

#include <memory>

namespace lumo {

/// One command with its behaviour. Every callback may be empty.
class Action
{
public:
    using TriggerCallback = kyr::FuzzyFunction<void(Action*)>;
    /// 0 unchecked, 1 partly, 2 checked.
    using StateCallback = kyr::FuzzyFunction<int(const Action*)>;
    using EnabledCallback = kyr::FuzzyFunction<bool(const Action*)>;
    using ToggledCallback = kyr::FuzzyFunction<void(bool)>;

    Action(std::shared_ptr<const ActionInfo> info, TriggerCallback trigger, StateCallback state,
           EnabledCallback enabled, ToggledCallback toggled);
    virtual ~Action();
    Action(const Action&) = delete;
    Action& operator=(const Action&) = delete;

    const ActionInfo& info() const noexcept { return *m_info; }
    /// Finds the action for as long as it lives. What shows an action and may outlive it, such as
    /// the entry of a menu, keeps this and not a pointer.
    std::weak_ptr<Action*> handle() const noexcept { return m_self; }
    /// 0 without a callback.
    int state() const { return m_state ? m_state(this) : 0; }
    /// True without a callback.
    bool isEnabled() const { return !m_enabled || m_enabled(this); }

    /// Does nothing while the action is disabled. The callback may destroy the action.
    void trigger();
    void setChecked(bool checked);

private:
    std::shared_ptr<Action*> m_self;
    std::shared_ptr<const ActionInfo> m_info;
    TriggerCallback m_trigger;
    StateCallback m_state;
    EnabledCallback m_enabled;
    ToggledCallback m_toggled;
};

} // namespace lumo
