#pragma once

#include <host/core/string_ref.h>
#include <host/undo/change_release.h>

#include <QString>
#include <QUndoStack>

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_map>

namespace Zar {

/// Records changes as steps of an undo stack. Lives on the GUI thread.
/// Changes recorded while a `CommitChangesScope` is open become one step with the scope's name;
/// scopes nest, and the outermost one makes the step and gives the name, unless it yields to those
/// in it. A change recorded outside any scope is a step of its own. Recording is O(1), ending a
/// scope linear in what was recorded in it. What the stack drops is destroyed from the event loop,
/// a part at a time.
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
    bool isScopeOpen() const noexcept { return !m_scopes.empty(); }

private:
    friend class CommitChangesScope;
    friend class StepCommand;

    using Changes = ChangeRelease::Changes;

    /// One open scope. What is recorded in it stays apart until it ends, so that it can be undone
    /// on its own.
    struct OpenScope
    {
        std::string name;
        bool yields = false;
        Changes changes;
        /// The place of the one change of each subject.
        std::unordered_map<const void*, std::size_t> subjects;
        /// The scopes directly in it that changed something, and the name of the last one.
        int innerCount = 0;
        std::string innerName;

        std::string stepName() const;
        void add(std::unique_ptr<IChange> change);
        /// Takes out what was joined and changes nothing in the end.
        void dropVoid();
    };

    void beginScope(StringRef name, bool yields);
    void endScope();
    void discardScope();
    void commit(Changes changes, const std::string& name);

    ChangeRelease m_release;
    QUndoStack m_stack; // gives what it drops to the release
    /// The innermost last.
    std::deque<OpenScope> m_scopes;
    bool m_replaying = false;
};

} // namespace Zar
