#include "debug_message.h"

#include <QLoggingCategory>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <mutex>

namespace Zar {
namespace {

Q_LOGGING_CATEGORY(hostLog, "kyr.host")

constexpr int criticalPriority = 6;

constexpr int warningPriority = 4;

// Whether the logging category would show a message that is not critical.
bool isLogged(int messagePriority)
{
    return messagePriority >= warningPriority ? hostLog().isWarningEnabled()
                                              : hostLog().isDebugEnabled();
}

void logMessage(const DebugMessage& message)
{
    const QByteArray text = QByteArray::fromStdString(message.text).trimmed();
    if (message.critical)
        qCCritical(hostLog, "%s", text.constData());
    else if (message.messagePriority >= warningPriority)
        qCWarning(hostLog, "%s", text.constData());
    else
        qCDebug(hostLog, "%s", text.constData());
}

struct SinkSlot
{
    std::mutex mutex;
    std::shared_ptr<const DebugMessageSink> sink;
    /// Spares messages that nobody wants the lock.
    std::atomic<bool> isSet = false;
};

SinkSlot& sinkSlot()
{
    static SinkSlot slot;
    return slot;
}

std::string formatted(const char* format, va_list arguments)
{
    char buffer[256];
    va_list first;
    va_copy(first, arguments);
    const int length = std::vsnprintf(buffer, sizeof buffer, format, first);
    va_end(first);
    if (length < 0)
        return format;
    const auto size = std::size_t(length);
    if (size < sizeof buffer)
        return std::string(buffer, size);
    std::string text(size, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

std::shared_ptr<const DebugMessageSink> currentSink()
{
    if (!sinkSlot().isSet)
        return nullptr;
    const std::lock_guard lock(sinkSlot().mutex);
    return sinkSlot().sink;
}

// The sink runs outside the lock, so it may send messages or replace itself.
void send(const DebugMessage& message, const std::shared_ptr<const DebugMessageSink>& sink)
{
    if (sink)
        (*sink)(message);
    else
        logMessage(message);
}

DebugMessage criticalWith(const char* file, unsigned line, std::string text)
{
    DebugMessage message;
    message.messagePriority = criticalPriority;
    message.critical = true;
    message.file = file;
    message.line = line;
    message.text = std::move(text);
    return message;
}

} // namespace

DebugMessageSink setDebugMessageSink(DebugMessageSink sink)
{
    auto next = sink ? std::make_shared<const DebugMessageSink>(std::move(sink)) : nullptr;
    {
        const std::lock_guard lock(sinkSlot().mutex);
        sinkSlot().sink.swap(next);
        sinkSlot().isSet = sinkSlot().sink != nullptr;
    }
    return next ? *next : DebugMessageSink();
}

void DebugMessageHelper::message(const char* format, ...) const
{
    const auto sink = currentSink();
    if (!sink && !isLogged(m_messagePriority))
        return;
    va_list arguments;
    va_start(arguments, format);
    DebugMessage message;
    message.text = formatted(format, arguments);
    va_end(arguments);
    message.componentPriority = m_componentPriority;
    message.messagePriority = m_messagePriority;
    message.category = m_category;
    message.source = m_source;
    send(message, sink);
}

void DebugMessageHelper::criticalMessage(const char* file, unsigned line, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);
    send(criticalWith(file, line, std::move(text)), currentSink());
}

void DebugMessageHelper::devCriticalMessage(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);
    send(criticalWith("", 0, std::move(text)), currentSink());
}

} // namespace Zar
