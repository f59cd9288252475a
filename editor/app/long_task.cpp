#include "long_task.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace editor {

namespace {

using namespace std::chrono_literals;

// Not long enough to be felt, and enough for a few thousand objects.
constexpr std::chrono::nanoseconds firstSlice = 50ms;
// Half a frame; more where drawing a frame takes long, so that it takes half of the time at most.
constexpr std::chrono::nanoseconds shortestSlice = 8ms;
constexpr std::chrono::nanoseconds longestSlice = 100ms;
// Milliseconds. Showing progress draws a frame, with the whole scene in it.
constexpr qint64 progressPeriod = 200;

} // namespace

LongTask::LongTask(QObject* parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &LongTask::workOnSlice);
}

LongTask::~LongTask() = default;

void LongTask::start(const QString& name, std::unique_ptr<SlicedJob> job,
                     std::function<void()> finished)
{
    if (m_job || !job)
        return;
    m_name = name;
    m_job = std::move(job);
    m_finished = std::move(finished);
    setProgress(0);
    QElapsedTimer clock;
    clock.start();
    // Work of several short parts is short.
    do {
        work(firstSlice);
    } while (m_job && clock.nsecsElapsed() < firstSlice.count());
    if (m_job)
        Q_EMIT runningChanged();
}

void LongTask::cancel()
{
    if (!m_job)
        return;
    m_timer.stop();
    m_job.reset();
    m_finished = {};
    Q_EMIT runningChanged();
    Q_EMIT canceled(m_name);
}

void LongTask::workOnSlice()
{
    const std::chrono::nanoseconds pause(m_pause.nsecsElapsed());
    work(std::clamp(pause, shortestSlice, longestSlice));
}

void LongTask::work(std::chrono::nanoseconds time)
{
    bool goesOn = false;
    QString error;
    try {
        goesOn = m_job->advance(time);
    } catch (const std::exception& exception) {
        error = QString::fromUtf8(exception.what());
    }
    if (goesOn) {
        if (m_progressAge.hasExpired(progressPeriod))
            setProgress(m_job->progress());
        m_pause.start();
        m_timer.start();
        return;
    }
    m_timer.stop();
    const auto finished = std::exchange(m_finished, {});
    if (error.isEmpty())
        finished();
    m_job.reset();
    Q_EMIT runningChanged();
    if (!error.isEmpty())
        Q_EMIT failed(m_name, error);
}

void LongTask::setProgress(qreal progress)
{
    m_progress = progress;
    m_progressAge.start();
    Q_EMIT progressChanged();
}

} // namespace editor
