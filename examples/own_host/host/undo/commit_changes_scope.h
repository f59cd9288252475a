#pragma once

#include <host/undo/changes_controller.h>

#include <utility>

namespace Zar {

/// What the library opens around each command: one step of the journal.
class CommitChangesScope
{
public:
    enum class CareFlag : int
    {
        None = 0,
    };

    CommitChangesScope(std::string_view name, ChangesController* journal,
                       CareFlag /*care*/ = CareFlag::None)
        : m_journal(journal)
    {
        if (m_journal)
            m_journal->begin(name);
    }
    ~CommitChangesScope()
    {
        if (m_journal)
            m_journal->end();
    }
    void discard()
    {
        if (ChangesController* journal = std::exchange(m_journal, nullptr))
            journal->discard();
    }
    CommitChangesScope(const CommitChangesScope&) = delete;
    CommitChangesScope& operator=(const CommitChangesScope&) = delete;

private:
    ChangesController* m_journal;
};

} // namespace Zar
