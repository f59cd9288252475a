#pragma once

namespace Zar {

/// One reversible change that has already been made when it is recorded. None of it may throw.
class IChange
{
public:
    virtual ~IChange() = default;

    virtual void undo() = 0;
    virtual void redo() = 0;

    /// What is changed as a whole, such as a selection; null for one change among many.
    /// Within one step, changes of the same subject are joined with `absorb`.
    virtual const void* subject() const noexcept { return nullptr; }
    /// Takes over the outcome of `later`, a change of the same subject.
    virtual void absorb(IChange& /*later*/) {}
    /// Whether undoing it would change nothing; such changes leave no step behind.
    virtual bool isVoid() const { return false; }
};

} // namespace Zar
