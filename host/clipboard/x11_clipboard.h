#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace Zar::platform {

/// The text on an X11 clipboard that belongs to another program, read on a connection of its own:
/// the toolkit's waits five seconds for each answer, and asks again and again.
///
/// An owner that does not answer is waited for half a second in all, then named in `problem`, and
/// for a while not asked again. One that is busy sending may take longer, by its size.
class X11Clipboard
{
public:
    /// Null where there is no X server, or the library was built without it. `selection` is
    /// "CLIPBOARD", or "PRIMARY" for what is merely selected.
    static std::unique_ptr<X11Clipboard> connect(const char* selection = "CLIPBOARD");
    ~X11Clipboard();
    X11Clipboard(const X11Clipboard&) = delete;
    X11Clipboard& operator=(const X11Clipboard&) = delete;

    /// Asks what is offered.
    bool offersText();
    /// The text as UTF-8; nothing when there is none. The first one after `offersText` does not
    /// ask again what is offered, if the owner is the same.
    std::optional<std::string> text();
    /// Why there was nothing to read; empty when nothing went wrong.
    const std::string& problem() const noexcept { return m_problem; }

private:
    class Connection;

    explicit X11Clipboard(std::unique_ptr<Connection> connection);
    bool isSilent(unsigned owner) const;
    void giveUpOn(unsigned owner);

    std::unique_ptr<Connection> m_connection;
    std::string m_problem;
    // As of the last question. An atom of 0 stands for no text.
    unsigned m_owner = 0;
    unsigned m_target = 0;
    std::chrono::steady_clock::duration m_waited{};
    unsigned m_silentOwner = 0;
    std::chrono::steady_clock::time_point m_silentSince;
};

} // namespace Zar::platform
