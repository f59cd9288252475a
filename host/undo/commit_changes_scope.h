#pragma once

#include <host/core/string_ref.h>
#include <host/undo/changes_controller.h>

#include <utility>

namespace Zar {

/// Everything recorded under `controller` while the scope lives becomes one undoable step, which
/// is committed when the scope ends. With a null controller nothing is gathered, and nothing costs.
class CommitChangesScope
{
public:
    enum class CareFlag : int
    {
        /// Commit whatever was recorded.
        None = 0,
        /// The scope is what a gesture opens around commands that name what they do: its step takes
        /// the name of the one command in it, or counts them: "Hide 3 objects".
        YieldName = 1,
    };

    CommitChangesScope(StringRef name, ChangesController* controller,
                       CareFlag care = CareFlag::None)
        : m_controller(controller)
    {
        if (m_controller)
            m_controller->beginScope(name, care == CareFlag::YieldName);
    }
    ~CommitChangesScope()
    {
        if (m_controller)
            m_controller->endScope();
    }
    /// Ends the scope now: what was recorded under it is undone and becomes part of no step.
    void discard()
    {
        if (ChangesController* controller = std::exchange(m_controller, nullptr))
            controller->discardScope();
    }
    CommitChangesScope(const CommitChangesScope&) = delete;
    CommitChangesScope& operator=(const CommitChangesScope&) = delete;

private:
    ChangesController* m_controller;
};

} // namespace Zar
