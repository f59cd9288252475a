#include "x11_connection.h"

#include <poll.h>

#include <cstdlib>
#include <cstring>

namespace Zar::platform {
namespace {

template <typename T>
struct FreeReply
{
    void operator()(T* reply) const noexcept { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, FreeReply<T>>;

template <typename T>
Reply<T> owned(T* reply) noexcept
{
    return Reply<T>(reply);
}

// No document is larger.
constexpr std::size_t mostBytes = std::size_t(1) << 30;

X11Connection::Clock::duration sendingTime(std::size_t bytes)
{
    constexpr double bytesPerSecond = 20e6;
    return std::chrono::duration_cast<X11Connection::Clock::duration>(
        std::chrono::duration<double>(double(bytes) / bytesPerSecond));
}

} // namespace

std::unique_ptr<X11Connection> X11Connection::open()
{
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return nullptr;
    }
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screenNumber > 0 && screen.rem > 1; --screenNumber)
        xcb_screen_next(&screen);
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screen.data->root));
}

X11Connection::X11Connection(xcb_connection_t* connection, xcb_window_t root)
    : m_connection(connection), m_root(root), m_property(atom("KYR_CLIPBOARD"))
{
    makeWindow();
}

X11Connection::~X11Connection()
{
    xcb_disconnect(m_connection);
}

// What is still sent to the old window goes nowhere.
void X11Connection::makeWindow()
{
    if (m_window != XCB_WINDOW_NONE)
        xcb_destroy_window(m_connection, m_window);
    m_window = xcb_generate_id(m_connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
}

xcb_atom_t X11Connection::atom(const char* name) const
{
    const auto cookie = xcb_intern_atom(m_connection, 0, std::uint16_t(std::strlen(name)), name);
    const auto reply = owned(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

std::vector<std::string> X11Connection::names(const std::vector<xcb_atom_t>& atoms) const
{
    std::vector<xcb_get_atom_name_cookie_t> cookies;
    for (const xcb_atom_t atom : atoms)
        cookies.push_back(xcb_get_atom_name(m_connection, atom));
    std::vector<std::string> names;
    for (const auto cookie : cookies) {
        const auto reply = owned(xcb_get_atom_name_reply(m_connection, cookie, nullptr));
        names.emplace_back();
        if (reply) {
            names.back().assign(xcb_get_atom_name_name(reply.get()),
                                std::size_t(xcb_get_atom_name_name_length(reply.get())));
        }
    }
    return names;
}

xcb_window_t X11Connection::owner(xcb_atom_t selection) const
{
    const auto cookie = xcb_get_selection_owner(m_connection, selection);
    const auto reply = owned(xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
    return reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
}

std::string X11Connection::nameOf(xcb_window_t window) const
{
    for (const xcb_atom_t property :
         {atom("_NET_WM_NAME"), xcb_atom_t(XCB_ATOM_WM_NAME), xcb_atom_t(XCB_ATOM_WM_CLASS)}) {
        xcb_atom_t type = XCB_ATOM_NONE;
        std::string name = readProperty(window, property, false, type);
        name.resize(std::strlen(name.c_str()));
        if (!name.empty())
            return name;
    }
    return "window " + std::to_string(window);
}

std::string X11Connection::readProperty(xcb_window_t window, xcb_atom_t property, bool remove,
                                        xcb_atom_t& type) const
{
    constexpr std::uint32_t wordsAtOnce = 1 << 20;
    std::string bytes;
    for (std::uint32_t offset = 0;; offset += wordsAtOnce) {
        const auto cookie = xcb_get_property(m_connection, remove, window, property,
                                             XCB_GET_PROPERTY_TYPE_ANY, offset, wordsAtOnce);
        const auto reply = owned(xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply)
            return bytes;
        type = reply->type;
        bytes.append(static_cast<const char*>(xcb_get_property_value(reply.get())),
                     std::size_t(xcb_get_property_value_length(reply.get())));
        if (reply->bytes_after == 0)
            return bytes;
    }
}

template <typename IsWanted>
bool X11Connection::waitFor(Clock::time_point deadline, IsWanted isWanted)
{
    for (;;) {
        while (const auto event = owned(xcb_poll_for_event(m_connection))) {
            if (isWanted(*event))
                return true;
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0 || xcb_connection_has_error(m_connection))
            return false;
        xcb_flush(m_connection);
        pollfd server{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        poll(&server, 1, int(left));
    }
}

X11Connection::Outcome X11Connection::request(xcb_atom_t selection, xcb_atom_t target,
                                              Clock::time_point deadline, SelectionData& data)
{
    xcb_delete_property(m_connection, m_window, m_property);
    xcb_convert_selection(m_connection, m_window, selection, target, m_property, XCB_CURRENT_TIME);
    bool isRefused = false;
    const auto isAnswer = [&](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_SELECTION_NOTIFY)
            return false;
        const auto& answer = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        isRefused = answer.property == XCB_ATOM_NONE;
        return answer.selection == selection && answer.target == target;
    };
    bool isReceived = waitFor(deadline, isAnswer);
    if (isReceived && isRefused)
        return Outcome::Refused;
    if (isReceived) {
        data.bytes = readProperty(m_window, m_property, true, data.type);
        if (data.type == atom("INCR")) {
            data.bytes.clear();
            isReceived = receiveParts(deadline, data.bytes);
        }
    }
    if (!isReceived)
        makeWindow();
    return isReceived ? Outcome::Received : Outcome::TimedOut;
}

// The owner writes the next part when the last one was taken away; an empty one is the end.
bool X11Connection::receiveParts(Clock::time_point deadline, std::string& bytes)
{
    const auto isPart = [this](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
            return false;
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        return change.atom == m_property && change.state == XCB_PROPERTY_NEW_VALUE;
    };
    while (bytes.size() < mostBytes && waitFor(deadline + sendingTime(bytes.size()), isPart)) {
        xcb_atom_t type = XCB_ATOM_NONE;
        const std::string part = readProperty(m_window, m_property, true, type);
        if (part.empty())
            return true;
        bytes += part;
    }
    return false;
}

} // namespace Zar::platform
