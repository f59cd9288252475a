#pragma once

namespace Zar {

/// One reversible change that has already been made when it is recorded.
class IChange
{
public:
    virtual ~IChange() = default;

    virtual void undo() = 0;
    virtual void redo() = 0;
    virtual const void* subject() const noexcept { return nullptr; }
    virtual void absorb(IChange& /*later*/) {}
    virtual bool isVoid() const { return false; }
};

} // namespace Zar
