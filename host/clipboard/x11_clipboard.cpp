#include "x11_clipboard.h"

#include "x11_connection.h"

#include "text_formats.h"
#include <host/core/debug_message.h>

#include <QString>

#include <cstring>
#include <utility>

namespace Zar::platform {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr Clock::duration patience = 500ms;
// How long an owner that did not answer is not asked again.
constexpr Clock::duration silence = 3s;

std::vector<xcb_atom_t> atomsIn(const std::string& bytes)
{
    std::vector<xcb_atom_t> atoms(bytes.size() / sizeof(xcb_atom_t));
    std::memcpy(atoms.data(), bytes.data(), atoms.size() * sizeof(xcb_atom_t));
    return atoms;
}

} // namespace

class X11Clipboard::Connection
{
public:
    Connection(std::unique_ptr<X11Connection> connection, const char* selection)
        : x11(std::move(connection)), clipboard(x11->atom(selection))
    {}

    std::unique_ptr<X11Connection> x11;
    xcb_atom_t clipboard;
    xcb_atom_t targets = x11->atom("TARGETS");
};

std::unique_ptr<X11Clipboard> X11Clipboard::connect(const char* selection)
{
    std::unique_ptr<X11Connection> connection = X11Connection::open();
    if (!connection)
        return nullptr;
    return std::unique_ptr<X11Clipboard>(
        new X11Clipboard(std::make_unique<Connection>(std::move(connection), selection)));
}

X11Clipboard::X11Clipboard(std::unique_ptr<Connection> connection)
    : m_connection(std::move(connection))
{}

X11Clipboard::~X11Clipboard() = default;

bool X11Clipboard::isSilent(unsigned owner) const
{
    return owner == m_silentOwner && Clock::now() - m_silentSince < silence;
}

void X11Clipboard::giveUpOn(unsigned owner)
{
    m_silentOwner = owner;
    m_silentSince = Clock::now();
    m_problem =
        "the clipboard's owner, \"" + m_connection->x11->nameOf(owner) + "\", does not answer";
    DebugMessageHelper(0, 4).message("Clipboard: %s", m_problem.c_str());
}

bool X11Clipboard::offersText()
{
    X11Connection& x11 = *m_connection->x11;
    m_owner = x11.owner(m_connection->clipboard);
    m_target = XCB_ATOM_NONE;
    m_waited = {};
    if (isSilent(m_owner))
        return false;
    m_problem.clear();
    if (m_owner == XCB_WINDOW_NONE)
        return false;
    const Clock::time_point start = Clock::now();
    SelectionData offered;
    const auto outcome =
        x11.request(m_connection->clipboard, m_connection->targets, start + patience, offered);
    m_waited = Clock::now() - start;
    if (outcome == X11Connection::Outcome::TimedOut)
        giveUpOn(m_owner);
    if (outcome != X11Connection::Outcome::Received)
        return false;
    const std::vector<xcb_atom_t> atoms = atomsIn(offered.bytes);
    if (const auto best = bestTextFormat(x11.names(atoms)))
        m_target = atoms[*best];
    return m_target != XCB_ATOM_NONE;
}

std::optional<std::string> X11Clipboard::text()
{
    X11Connection& x11 = *m_connection->x11;
    const bool isKnown = m_owner != XCB_WINDOW_NONE &&
                         m_owner == x11.owner(m_connection->clipboard) && !isSilent(m_owner);
    if (!isKnown && !offersText())
        return std::nullopt;
    // By the next time the same owner may offer something else.
    const unsigned owner = std::exchange(m_owner, unsigned(XCB_WINDOW_NONE));
    if (m_target == XCB_ATOM_NONE)
        return std::nullopt;
    SelectionData data;
    // The question before has taken its part of the time already.
    const auto outcome =
        x11.request(m_connection->clipboard, m_target, Clock::now() + patience - m_waited, data);
    if (outcome == X11Connection::Outcome::TimedOut)
        giveUpOn(owner);
    if (outcome != X11Connection::Outcome::Received)
        return std::nullopt;
    if (data.type == XCB_ATOM_STRING)
        return QString::fromLatin1(data.bytes.data(), int(data.bytes.size())).toStdString();
    return std::move(data.bytes);
}

} // namespace Zar::platform
