#pragma once

#include <host/core/string_ref.h>
#include <host/undo/change.h>

#include <QString>
#include <QUndoStack>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zar {

/// Records changes as steps of an undo stack. Lives on the GUI thread.
/// Changes recorded while a `CommitChangesScope` is open become one step with the scope's name;
/// scopes nest, and the outermost one gives the name. A change recorded outside any scope is a
/// step of its own.
class ChangesController
{
public:
    ChangesController() = default;
    ChangesController(const ChangesController&) = delete;
    ChangesController& operator=(const ChangesController&) = delete;

    /// For undo, redo, texts and signals. Push no commands of your own while a scope is open.
    QUndoStack& stack() noexcept { return m_stack; }

    /// Records a change that has just been made; ignored while a step is undone or redone.
    void record(std::unique_ptr<IChange> change, StringRef name);
    bool isReplaying() const noexcept { return m_replaying; }
    bool isScopeOpen() const noexcept { return m_depth > 0; }

private:
    friend class CommitChangesScope;
    friend class StepCommand;

    void beginScope(StringRef name);
    void endScope();
    void commit();

    QUndoStack m_stack;
    std::vector<std::unique_ptr<IChange>> m_open;
    std::unordered_map<const void*, IChange*> m_openSubjects;
    std::string m_openName;
    int m_depth = 0;
    bool m_replaying = false;
};

} // namespace Zar
