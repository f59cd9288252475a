#pragma once

#include <string>
#include <vector>

namespace Zar {

/// Diagnostic stack of the operations in progress on the calling thread.
class StackTracker
{
public:
    /// `name` and `file` must outlive the matching `pop`.
    static void push(const char* name, const char* file, unsigned line);
    /// Does nothing on an empty stack.
    static void pop() noexcept;

    /// Names of the operations in progress on this thread, outermost first.
    static std::vector<std::string> entries();
};

/// Keeps one entry on the stack for its own lifetime.
class StackTrackerScope
{
public:
    explicit StackTrackerScope(const char* name, const char* file,
                               unsigned line = unsigned(__builtin_LINE()))
    {
        StackTracker::push(name, file, line);
    }
    ~StackTrackerScope() { StackTracker::pop(); }
    StackTrackerScope(const StackTrackerScope&) = delete;
    StackTrackerScope& operator=(const StackTrackerScope&) = delete;
};

} // namespace Zar
