#pragma once

#include <host/undo/change.h>

#include <QTimer>

#include <deque>
#include <memory>

namespace Zar {

/// Destroys changes, many of them bit by bit from the event loop: those of a large paste take
/// tenths of a second. Without an application all go at once.
class ChangeRelease
{
public:
    /// No vector: one that grows moves all of them.
    using Changes = std::deque<std::unique_ptr<IChange>>;

    ChangeRelease();

    void add(Changes changes);

private:
    void advance();

    std::deque<Changes> m_waiting;
    QTimer m_timer;
};

} // namespace Zar
