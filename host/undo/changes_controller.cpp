#include "changes_controller.h"

#include <host/core/debug_message.h>

#include <QScopedValueRollback>
#include <QUndoCommand>

#include <algorithm>
#include <exception>

namespace Zar {

namespace {

// Changes lie all over memory, and to wait for each is most of what replaying many of them costs.
void prefetch(const IChange& change)
{
    constexpr std::size_t line = 64;
    constexpr std::size_t lines = 3;
    for (std::size_t i = 0; i < lines; ++i)
        __builtin_prefetch(reinterpret_cast<const char*>(&change) + i * line);
}

/// Calls `replay` for the changes from `first` to `last`.
template <typename Iterator, typename Replay>
void replayAll(Iterator first, Iterator last, Replay replay)
{
    constexpr std::ptrdiff_t ahead = 8;
    for (; first != last; ++first) {
        if (last - first > ahead)
            prefetch(*first[ahead]);
        replay(**first);
    }
}

} // namespace

/// A finished step on the stack. The stack redoes a command when it is pushed; the changes have
/// been made by then, so the first redo does nothing.
class StepCommand : public QUndoCommand
{
public:
    StepCommand(const QString& name, ChangesController::Changes changes,
                ChangesController& controller)
        : QUndoCommand(name), m_changes(std::move(changes)), m_controller(controller)
    {}
    ~StepCommand() override { m_controller.m_release.add(std::move(m_changes)); }

    void undo() override
    {
        const QScopedValueRollback replaying(m_controller.m_replaying, true);
        replayAll(m_changes.rbegin(), m_changes.rend(), [](IChange& change) { change.undo(); });
    }

    void redo() override
    {
        if (std::exchange(m_pushed, true)) {
            const QScopedValueRollback replaying(m_controller.m_replaying, true);
            replayAll(m_changes.begin(), m_changes.end(), [](IChange& change) { change.redo(); });
        }
    }

private:
    ChangesController::Changes m_changes;
    ChangesController& m_controller;
    bool m_pushed = false;
};

std::string ChangesController::OpenScope::stepName() const
{
    if (!yields || innerCount == 0)
        return name;
    return innerCount == 1 ? innerName : name + ' ' + std::to_string(innerCount) + " objects";
}

void ChangesController::OpenScope::add(std::unique_ptr<IChange> change)
{
    if (const void* subject = change->subject()) {
        const auto [entry, inserted] = subjects.try_emplace(subject, changes.size());
        if (!inserted) {
            changes[entry->second]->absorb(*change);
            return;
        }
    } else if (change->isVoid()) {
        return; // nothing will be joined with it
    }
    changes.push_back(std::move(change));
}

void ChangesController::OpenScope::dropVoid()
{
    bool any = false;
    for (const auto& [subject, place] : subjects) {
        if (changes[place]->isVoid()) {
            changes[place].reset();
            any = true;
        }
    }
    if (any)
        changes.erase(std::remove(changes.begin(), changes.end(), nullptr), changes.end());
}

void ChangesController::record(std::unique_ptr<IChange> change, StringRef name)
{
    if (m_replaying)
        return;
    if (m_scopes.empty()) {
        Changes step;
        if (!change->isVoid())
            step.push_back(std::move(change));
        commit(std::move(step), std::string(name));
    } else {
        m_scopes.back().add(std::move(change));
    }
}

void ChangesController::beginScope(StringRef name, bool yields)
{
    m_scopes.emplace_back();
    m_scopes.back().name = name;
    m_scopes.back().yields = yields;
}

void ChangesController::endScope()
{
    OpenScope ended = std::move(m_scopes.back());
    m_scopes.pop_back();
    const std::string name = ended.stepName();
    if (m_scopes.empty()) {
        ended.dropVoid();
        commit(std::move(ended.changes), name);
        return;
    }
    OpenScope& outer = m_scopes.back();
    if (!ended.changes.empty()) {
        ++outer.innerCount;
        outer.innerName = name;
    }
    for (auto& change : ended.changes)
        outer.add(std::move(change));
}

void ChangesController::discardScope()
{
    const OpenScope discarded = std::move(m_scopes.back());
    m_scopes.pop_back();
    const QScopedValueRollback replaying(m_replaying, true);
    for (auto change = discarded.changes.rbegin(); change != discarded.changes.rend(); ++change) {
        // What one change throws must not keep the others from being taken back.
        try {
            (*change)->undo();
        } catch (const std::exception& error) {
            DebugMessageHelper(0, 5).message("While a change was taken back: %s", error.what());
        }
    }
}

void ChangesController::commit(Changes changes, const std::string& name)
{
    if (changes.empty())
        return;
    m_stack.push(new StepCommand(QString::fromStdString(name), std::move(changes), *this));
}

} // namespace Zar
