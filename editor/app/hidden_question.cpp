#include "hidden_question.h"

#include <utility>

namespace editor {

void HiddenQuestion::ask(const QString& command, const std::function<void()>& action)
{
    m_waiting = action;
    if (m_hiddenCount > 0)
        Q_EMIT asked(command, m_hiddenCount);
    else
        proceed();
}

void HiddenQuestion::proceed()
{
    if (const std::function<void()> action = std::exchange(m_waiting, nullptr))
        action();
}

} // namespace editor
