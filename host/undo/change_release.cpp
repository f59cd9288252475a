#include "change_release.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace Zar {

namespace {

constexpr int sliceMilliseconds = 4;
// The clock costs more than a change.
constexpr std::size_t changesAtOnce = 64;

} // namespace

ChangeRelease::ChangeRelease()
{
    m_timer.setInterval(0);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { advance(); });
}

void ChangeRelease::add(Changes changes)
{
    if (changes.size() <= changesAtOnce || !QCoreApplication::instance())
        return;
    m_waiting.push_back(std::move(changes));
    m_timer.start();
}

void ChangeRelease::advance()
{
    const QDeadlineTimer end(sliceMilliseconds);
    while (!m_waiting.empty() && !end.hasExpired()) {
        // What a change does at its end may bring more, behind these.
        Changes& changes = m_waiting.front();
        for (std::size_t i = 0; i < changesAtOnce && !changes.empty(); ++i)
            changes.pop_back();
        if (changes.empty())
            m_waiting.pop_front();
    }
    if (m_waiting.empty())
        m_timer.stop();
}

} // namespace Zar
