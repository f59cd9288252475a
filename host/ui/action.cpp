#include "action.h"

namespace lumo {

Action::Action(std::shared_ptr<const ActionInfo> info, TriggerCallback trigger, StateCallback state,
               EnabledCallback enabled, ToggledCallback toggled)
    : m_self(std::make_shared<Action*>(this))
    , m_info(std::move(info))
    , m_trigger(std::move(trigger))
    , m_state(std::move(state))
    , m_enabled(std::move(enabled))
    , m_toggled(std::move(toggled))
{}

Action::~Action() = default;

void Action::trigger()
{
    const std::weak_ptr<Action*> self = m_self;
    const TriggerCallback callback = m_trigger;
    if (callback && isEnabled() && !self.expired())
        callback(this);
}

void Action::setChecked(bool checked)
{
    const std::weak_ptr<Action*> self = m_self;
    const ToggledCallback callback = m_toggled;
    if (callback && isEnabled() && !self.expired())
        callback(checked);
}

} // namespace lumo
