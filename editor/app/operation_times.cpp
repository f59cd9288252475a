#include "operation_times.h"

#include "editor_application.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QThread>

#include <algorithm>
#include <utility>

namespace editor {

namespace {

using namespace std::chrono_literals;

/// Long enough for the next frame and for answers of other threads.
constexpr auto quietTime = 150ms;
/// Timers of cursors and animations take less.
constexpr auto leastWork = 500us;

qreal milliseconds(std::chrono::steady_clock::duration time)
{
    return std::chrono::duration<qreal, std::milli>(time).count();
}

bool isPointerAtRest(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseMove:
        return static_cast<const QMouseEvent&>(event).buttons() == Qt::NoButton;
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::HoverMove:
        return true;
    default:
        return false;
    }
}

} // namespace

OperationTimes::Piece::Piece(OperationTimes& times, const QEvent& event) : m_times(times)
{
    const int level = QThread::currentThread()->loopLevel();
    m_isInner = level <= times.m_level;
    if (m_isInner)
        return;
    m_outerLevel = std::exchange(times.m_level, level);
    m_counts = !isPointerAtRest(event);
    m_keepsOpen = m_counts && event.type() != QEvent::UpdateRequest;
    times.takeInput(event);
    times.m_start = Clock::now();
}

OperationTimes::Piece::~Piece()
{
    if (m_isInner)
        return;
    const Clock::time_point now = Clock::now();
    const Clock::duration time = now - m_times.m_start;
    m_times.m_level = m_outerLevel;
    // Of an event in which another event loop ran, only what comes after that was work.
    m_times.m_start = now;
    if (!m_times.m_isOpen || !m_counts)
        return;
    m_times.m_current.total += time;
    m_times.m_current.longest = std::max(m_times.m_current.longest, time);
    ++m_times.m_current.pieces;
    if (m_keepsOpen && time >= leastWork)
        m_times.m_lastWork = now;
}

OperationTimes::OperationTimes(QObject* parent) : QObject(parent)
{
    m_quiet.setSingleShot(true);
    connect(&m_quiet, &QTimer::timeout, this, &OperationTimes::closeWhenQuiet);
}

OperationTimes::~OperationTimes()
{
    setActive(false);
}

void OperationTimes::setActive(bool active)
{
    if (auto* application = EditorApplication::current())
        application->measureWith(active ? this : nullptr);
    if (active)
        return;
    m_quiet.stop();
    m_isOpen = false;
    m_last = {};
    Q_EMIT changed();
}

qreal OperationTimes::total() const
{
    return milliseconds(m_last.total);
}

qreal OperationTimes::longest() const
{
    return milliseconds(m_last.longest);
}

void OperationTimes::describe(const QString& name)
{
    if (m_isOpen && !std::exchange(m_isDescribed, true))
        m_current.name = name;
}

void OperationTimes::takeInput(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const auto& key = static_cast<const QKeyEvent&>(event);
        const bool isKnown = std::exchange(m_overriddenKey, 0) == key.key();
        if (key.key() >= Qt::Key_Shift && key.key() <= Qt::Key_ScrollLock)
            break;
        if (event.type() == QEvent::ShortcutOverride)
            m_overriddenKey = key.key();
        else if (isKnown && m_isOpen)
            break;
        open(QKeySequence(int(key.modifiers() & ~Qt::KeypadModifier) | key.key())
                 .toString(QKeySequence::NativeText));
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        m_pressed = static_cast<const QMouseEvent&>(event).globalPos();
        open(tr("Click"));
        break;
    case QEvent::MouseButtonRelease:
        if (!m_isOpen)
            open(tr("Click"));
        break;
    case QEvent::MouseMove: {
        const auto& move = static_cast<const QMouseEvent&>(event);
        if (move.buttons() == Qt::NoButton ||
            (move.globalPos() - m_pressed).manhattanLength() <
                QGuiApplication::styleHints()->startDragDistance())
            break;
        if (!m_isOpen)
            open(tr("Drag"));
        else if (!m_isDescribed)
            m_current.name = tr("Drag");
        break;
    }
    case QEvent::Wheel:
        open(tr("Scroll"));
        break;
    case QEvent::Drop:
        open(tr("Drop"));
        break;
    default:
        break;
    }
}

void OperationTimes::open(const QString& input)
{
    close();
    m_current = {input};
    m_isOpen = true;
    m_isDescribed = false;
    m_lastWork = Clock::now();
    m_quiet.start(quietTime);
}

void OperationTimes::close()
{
    m_quiet.stop();
    if (!std::exchange(m_isOpen, false))
        return;
    m_last = m_current;
    Q_EMIT changed();
}

void OperationTimes::closeWhenQuiet()
{
    const auto rest = quietTime - (Clock::now() - m_lastWork);
    if (rest <= rest.zero())
        close();
    else
        m_quiet.start(std::chrono::ceil<std::chrono::milliseconds>(rest));
}

} // namespace editor
