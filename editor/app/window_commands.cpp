#include "window_commands.h"

#include <QSettings>

namespace editor {

static const auto revealKey = QStringLiteral("window/alwaysReveal");
static const auto logKey = QStringLiteral("window/logShown");
static const auto timesKey = QStringLiteral("window/operationTimes");

WindowCommands::WindowCommands(QObject* parent)
    : QObject(parent)
    , m_alwaysReveal(QSettings().value(revealKey, true).toBool())
    , m_logShown(QSettings().value(logKey, true).toBool())
    , m_operationTimesShown(QSettings().value(timesKey, false).toBool())
{}

void WindowCommands::toggleAlwaysReveal()
{
    m_alwaysReveal = !m_alwaysReveal;
    remember();
}

void WindowCommands::toggleLog()
{
    m_logShown = !m_logShown;
    remember();
}

void WindowCommands::toggleOperationTimes()
{
    m_operationTimesShown = !m_operationTimesShown;
    QSettings().setValue(timesKey, m_operationTimesShown);
    Q_EMIT stateChanged();
}

void WindowCommands::setSceneMeasured(bool measured)
{
    m_operationTimesShown = measured || QSettings().value(timesKey, false).toBool();
    Q_EMIT stateChanged();
}

void WindowCommands::remember()
{
    QSettings settings;
    settings.setValue(revealKey, m_alwaysReveal);
    settings.setValue(logKey, m_logShown);
    Q_EMIT stateChanged();
}

} // namespace editor
