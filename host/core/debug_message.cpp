#include "debug_message.h"

#include <QLoggingCategory>

#include <cstdarg>
#include <cstdio>
#include <mutex>

namespace Zar {
namespace {

Q_LOGGING_CATEGORY(hostLog, "kyr.host")

constexpr int criticalPriority = 6;

void logMessage(const DebugMessage& message)
{
    const QString text = QString::fromStdString(message.text).trimmed();
    if (message.critical)
        qCCritical(hostLog).noquote() << text;
    else if (message.messagePriority >= 4)
        qCWarning(hostLog).noquote() << text;
    else
        qCDebug(hostLog).noquote() << text;
}

struct SinkSlot
{
    std::mutex mutex;
    DebugMessageSink sink;
};

SinkSlot& sinkSlot()
{
    static SinkSlot slot;
    return slot;
}

std::string formatted(const char* format, va_list arguments)
{
    va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0)
        return format;
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

// The sink runs on a copy, outside the lock, so it may send messages or replace itself.
void send(const DebugMessage& message)
{
    DebugMessageSink sink;
    {
        const std::lock_guard lock(sinkSlot().mutex);
        sink = sinkSlot().sink;
    }
    if (sink)
        sink(message);
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
    const std::lock_guard lock(sinkSlot().mutex);
    return std::exchange(sinkSlot().sink, std::move(sink));
}

void DebugMessageHelper::message(const char* format, ...) const
{
    va_list arguments;
    va_start(arguments, format);
    DebugMessage message;
    message.text = formatted(format, arguments);
    va_end(arguments);
    message.componentPriority = m_componentPriority;
    message.messagePriority = m_messagePriority;
    message.category = m_category;
    message.source = m_source;
    send(message);
}

void DebugMessageHelper::criticalMessage(const char* file, unsigned line, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);
    send(criticalWith(file, line, std::move(text)));
}

void DebugMessageHelper::devCriticalMessage(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);
    send(criticalWith("", 0, std::move(text)));
}

} // namespace Zar
