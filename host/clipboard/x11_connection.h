#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Zar::platform {

/// Data that the owner of a selection sent.
struct SelectionData
{
    xcb_atom_t type = XCB_ATOM_NONE;
    std::string bytes;
};

/// A connection to the X server with a window that selections are sent to, as ICCCM 2.4 and 2.7
/// describe it.
class X11Connection
{
public:
    using Clock = std::chrono::steady_clock;

    /// Null when there is no server.
    static std::unique_ptr<X11Connection> open();
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    xcb_atom_t atom(const char* name) const;
    std::vector<std::string> names(const std::vector<xcb_atom_t>& atoms) const;

    xcb_window_t owner(xcb_atom_t selection) const;
    /// What the program of a window calls it, or its number.
    std::string nameOf(xcb_window_t window) const;

    enum class Outcome
    {
        Received,
        Refused,
        TimedOut,
    };
    /// Asks the owner for the selection in the form `target`. The owner has until `deadline`, and
    /// while it is sending as much longer as its bytes take at 20 MB a second.
    Outcome request(xcb_atom_t selection, xcb_atom_t target, Clock::time_point deadline,
                    SelectionData& data);

private:
    X11Connection(xcb_connection_t* connection, xcb_window_t root);

    void makeWindow();
    std::string readProperty(xcb_window_t window, xcb_atom_t property, bool remove,
                             xcb_atom_t& type) const;
    bool receiveParts(Clock::time_point deadline, std::string& bytes);
    template <typename IsWanted>
    bool waitFor(Clock::time_point deadline, IsWanted isWanted);

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_atom_t m_property;
};

} // namespace Zar::platform
