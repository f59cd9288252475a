#include "action.h"

namespace lumo {

Action::Action(std::shared_ptr<const ActionInfo> info, TriggerCallback trigger, StateCallback state,
               EnabledCallback enabled, ToggledCallback toggled)
    : m_info(std::move(info))
    , m_trigger(std::move(trigger))
    , m_state(std::move(state))
    , m_enabled(std::move(enabled))
    , m_toggled(std::move(toggled))
{}

Action::~Action() = default;

void Action::trigger()
{
    if (m_trigger && isEnabled())
        m_trigger(this);
}

void Action::setChecked(bool checked)
{
    if (m_toggled && isEnabled())
        m_toggled(checked);
}

} // namespace lumo
