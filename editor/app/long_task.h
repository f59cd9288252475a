#pragma once

#include <editor/app/sliced_job.h>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

namespace editor {

/// A copy or paste, worked off in slices on the event loop. One that is short is done at once.
/// While it is running nothing else may edit the scene or undo.
class LongTask final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    Q_PROPERTY(QString name READ name NOTIFY runningChanged)
    Q_PROPERTY(qreal progress READ progress NOTIFY progressChanged)

public:
    explicit LongTask(QObject* parent = nullptr);
    /// Cancels.
    ~LongTask() override;

    bool isRunning() const noexcept { return m_job != nullptr; }
    QString name() const { return m_name; }
    /// From 0 to 1.
    qreal progress() const noexcept { return m_progress; }

    /// Does nothing while another job is running. `finished` is called at the end unless the job
    /// is cancelled or fails, and may look at the job.
    void start(const QString& name, std::unique_ptr<SlicedJob> job, std::function<void()> finished);
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void runningChanged();
    void progressChanged();
    void canceled(const QString& name);
    /// Something that the job called threw; the job took back what it had done.
    void failed(const QString& name, const QString& error);

private:
    void work(std::chrono::nanoseconds time);
    void workOnSlice();
    void setProgress(qreal progress);

    std::unique_ptr<SlicedJob> m_job;
    std::function<void()> m_finished;
    QTimer m_timer;
    /// Since the last slice.
    QElapsedTimer m_pause;
    QElapsedTimer m_progressAge;
    QString m_name;
    qreal m_progress = 0;
};

} // namespace editor
