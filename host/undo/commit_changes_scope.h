#pragma once

#include <host/core/string_ref.h>
#include <host/undo/changes_controller.h>

namespace Zar {

/// Everything recorded under `controller` while the scope lives becomes one undoable step, which
/// is committed when the scope ends. With a null controller nothing is gathered.
class CommitChangesScope
{
public:
    enum class CareFlag : int
    {
        /// Commit whatever was recorded.
        None = 0,
    };

    CommitChangesScope(StringRef name, ChangesController* controller,
                       CareFlag /*care*/ = CareFlag::None)
        : m_controller(controller)
    {
        if (m_controller)
            m_controller->beginScope(name);
    }
    ~CommitChangesScope()
    {
        if (m_controller)
            m_controller->endScope();
    }
    CommitChangesScope(const CommitChangesScope&) = delete;
    CommitChangesScope& operator=(const CommitChangesScope&) = delete;

private:
    ChangesController* m_controller;
};

} // namespace Zar
