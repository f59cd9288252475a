#include <host/undo/changes_controller.h>

#include <algorithm>
#include <utility>

namespace Zar {

void ChangesController::Step::undo()
{
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        (*change)->undo();
}

void ChangesController::Step::redo()
{
    for (const auto& change : changes)
        change->redo();
}

void ChangesController::begin(std::string_view name)
{
    m_open.push_back({std::string(name), {}});
}

void ChangesController::end()
{
    Step step = std::move(m_open.back());
    m_open.pop_back();
    if (m_open.empty()) {
        close(std::move(step));
        return;
    }
    auto& outer = m_open.back().changes;
    std::move(step.changes.begin(), step.changes.end(), std::back_inserter(outer));
}

void ChangesController::discard()
{
    Step step = std::move(m_open.back());
    m_open.pop_back();
    m_replaying = true;
    step.undo();
    m_replaying = false;
}

void ChangesController::record(std::unique_ptr<IChange> change, std::string_view name)
{
    if (m_replaying)
        return;
    if (!m_open.empty()) {
        m_open.back().changes.push_back(std::move(change));
        return;
    }
    Step step{std::string(name), {}};
    step.changes.push_back(std::move(change));
    close(std::move(step));
}

void ChangesController::close(Step step)
{
    const bool isVoid = std::all_of(step.changes.begin(), step.changes.end(),
                                    [](const auto& change) { return change->isVoid(); });
    if (isVoid)
        return;
    m_steps.resize(m_place);
    m_steps.push_back(std::move(step));
    ++m_place;
}

bool ChangesController::undo()
{
    if (m_place == 0)
        return false;
    m_replaying = true;
    m_steps[--m_place].undo();
    m_replaying = false;
    return true;
}

bool ChangesController::redo()
{
    if (m_place == m_steps.size())
        return false;
    m_replaying = true;
    m_steps[m_place++].redo();
    m_replaying = false;
    return true;
}

} // namespace Zar
