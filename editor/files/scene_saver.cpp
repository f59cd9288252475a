#include "scene_saver.h"

#include "scene_writer.h"

#include <QThread>

#include <atomic>

namespace editor {

namespace {

using namespace std::chrono_literals;

// Half a frame.
constexpr std::chrono::nanoseconds sliceTime = 8ms;
constexpr double copiedShare = 0.2;
constexpr double smallestReport = 0.01;

} // namespace

struct SceneSaver::Job
{
    QString path;
    SceneObjectPtr scene;
    std::unique_ptr<QThread> thread;
    std::atomic<bool> isCanceled{false};
    double reported = 0;
    QString error;
};

SceneSaver::SceneSaver(SceneDocument& document, QObject* parent)
    : QObject(parent), m_document(document)
{
    m_copyTimer.setInterval(0);
    m_copyTimer.setSingleShot(true);
    connect(&m_copyTimer, &QTimer::timeout, this, &SceneSaver::copySlice);

    const auto shapeChanged = [this] { documentChanged(ChangeAspect::Children); };
    connect(&document, &SceneDocument::aboutToReset, this, &SceneSaver::sceneGoes);
    connect(&document, &SceneDocument::rowsAboutToBeInserted, this, shapeChanged);
    connect(&document, &SceneDocument::rowsAboutToBeRemoved, this, shapeChanged);
    connect(&document, &SceneDocument::rowsAboutToBeMoved, this, shapeChanged);
    connect(&document, &SceneDocument::childrenAboutToBeReordered, this, shapeChanged);
    connect(&document, &SceneDocument::objectsChanged, this, [this](const ObjectChanges& changes) {
        for (const ObjectChange& change : changes)
            documentChanged(change.aspects);
    });
}

SceneSaver::~SceneSaver()
{
    if (!m_job || !m_job->thread)
        return;
    m_job->isCanceled = true;
    m_job->thread->wait();
}

void SceneSaver::save(const QString& path)
{
    if (m_job)
        return;
    m_job = std::make_unique<Job>();
    m_job->path = path;
    m_isCurrent = true;
    m_progress = 0;
    Q_EMIT savingChanged();
    Q_EMIT progressChanged();
    copySlice();
}

void SceneSaver::cancel()
{
    if (!m_job)
        return;
    m_job->isCanceled = true;
    if (m_job->thread)
        return;
    m_copyTimer.stop();
    m_snapshot.reset();
    const QString path = std::exchange(m_job, nullptr)->path;
    Q_EMIT savingChanged();
    Q_EMIT canceled(path);
}

void SceneSaver::documentChanged(ChangeAspects aspects)
{
    // Whether something differs from the file is not in the file.
    if (!m_job || aspects == ChangeAspects(ChangeAspect::Modified))
        return;
    if (m_job->thread)
        m_isCurrent = false;
    else
        m_snapshot.reset();
}

// Another scene is not what was to be saved.
void SceneSaver::sceneGoes()
{
    if (m_job && !m_job->thread)
        cancel();
    m_isCurrent = false;
}

void SceneSaver::copySlice()
{
    if (!m_snapshot)
        m_snapshot = std::make_unique<SceneSnapshot>(*m_document.root());
    // A step that is being made shows half of itself.
    const bool isWaiting = m_document.isStepOpen();
    if (isWaiting || m_snapshot->advance(sliceTime)) {
        setProgress(copiedShare * m_snapshot->progress());
        m_copyTimer.start();
        return;
    }
    write();
}

void SceneSaver::write()
{
    m_job->scene = m_snapshot->takeCopy();
    m_snapshot.reset();
    m_job->thread.reset(QThread::create([this, job = m_job.get()] { run(*job); }));
    connect(m_job->thread.get(), &QThread::finished, this, &SceneSaver::finish);
    m_job->thread->start();
}

// In the job's thread. The saver outlives it.
void SceneSaver::run(Job& job)
{
    job.error = writeScene(*job.scene, job.path, [this, &job](double share) {
        if (share - job.reported >= smallestReport) {
            job.reported = share;
            const auto report = [this, &job, share] {
                if (m_job.get() == &job)
                    setProgress(copiedShare + (1 - copiedShare) * share);
            };
            QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
        }
        return !job.isCanceled;
    });
    // Takes as long as copying it did.
    job.scene.reset();
}

void SceneSaver::finish()
{
    // It has only just left its function.
    m_job->thread->wait();
    const std::unique_ptr<Job> job = std::exchange(m_job, nullptr);
    Q_EMIT savingChanged();
    if (job->error.isEmpty())
        Q_EMIT saved(job->path, m_isCurrent);
    else if (job->isCanceled)
        Q_EMIT canceled(job->path);
    else
        Q_EMIT failed(job->path, job->error);
}

void SceneSaver::setProgress(qreal progress)
{
    m_progress = progress;
    Q_EMIT progressChanged();
}

} // namespace editor
