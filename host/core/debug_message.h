#pragma once

#include <functional>
#include <string>

namespace Zar {

/// One message as a sink receives it.
struct DebugMessage
{
    int componentPriority = 0;
    /// 5 failed command, 4 skipped item, 2 progress note; critical messages carry 6.
    int messagePriority = 0;
    std::string category;
    int source = 0;
    bool critical = false;
    /// Where a critical message was raised; empty and 0 otherwise.
    std::string file;
    unsigned line = 0;
    std::string text;
};

/// Receives every message, on the thread that sent it. A sink may send messages itself.
using DebugMessageSink = std::function<void(const DebugMessage&)>;

/// Replaces the sink and returns the previous one. An empty sink restores the default, which
/// writes to the logging category "kyr.host". Thread-safe.
DebugMessageSink setDebugMessageSink(DebugMessageSink sink);

/// Puts a sink in place for its own lifetime.
class DebugMessageSinkGuard
{
public:
    explicit DebugMessageSinkGuard(DebugMessageSink sink)
        : m_previous(setDebugMessageSink(std::move(sink)))
    {}
    ~DebugMessageSinkGuard() { setDebugMessageSink(std::move(m_previous)); }
    DebugMessageSinkGuard(const DebugMessageSinkGuard&) = delete;
    DebugMessageSinkGuard& operator=(const DebugMessageSinkGuard&) = delete;

private:
    DebugMessageSink m_previous;
};

/// Sends printf-formatted messages to the sink. Texts have no length limit.
class DebugMessageHelper
{
public:
    DebugMessageHelper(int componentPriority, int messagePriority, const char* category = "",
                       int source = 0) noexcept
        : m_componentPriority(componentPriority)
        , m_messagePriority(messagePriority)
        , m_category(category)
        , m_source(source)
    {}

    void message(const char* format, ...) const __attribute__((format(printf, 2, 3)));

    /// Reports a broken invariant and returns: the caller carries on.
    static void criticalMessage(const char* file, unsigned line, const char* format, ...)
        __attribute__((format(printf, 3, 4)));

    /// Reports a fault of the calling program.
    static void devCriticalMessage(const char* format, ...) __attribute__((format(printf, 1, 2)));

private:
    int m_componentPriority;
    int m_messagePriority;
    const char* m_category;
    int m_source;
};

/// Reports `condition` as a failed assertion of `file` when `holds` is false, and returns `holds`.
inline bool verify(bool holds, const char* condition, const char* file,
                   unsigned line = unsigned(__builtin_LINE()))
{
    if (!holds) {
        DebugMessageHelper::criticalMessage(file, line, "ASSERTION FAILED: %s\r\n%s(%u)%s%s\r\n",
                                            condition, file, line, "", "");
    }
    return holds;
}

} // namespace Zar
