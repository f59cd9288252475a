#pragma once

#include <host/core/debug_message.h>

#include <string>
#include <vector>

namespace test {

/// Takes the host's debug messages for its own lifetime: "5 text" a message, "! text" a critical
/// one.
class MessageLog
{
public:
    MessageLog()
        : m_guard([this](const Zar::DebugMessage& message) {
            m_lines.push_back((message.critical ? "!" : std::to_string(message.messagePriority)) +
                              " " + message.text);
        })
    {}

    std::vector<std::string> take() { return std::exchange(m_lines, {}); }

private:
    std::vector<std::string> m_lines;
    Zar::DebugMessageSinkGuard m_guard;
};

} // namespace test
