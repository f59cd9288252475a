#include "scene_loader.h"

#include "scene_import.h"

#include <QThread>

#include <algorithm>
#include <atomic>

namespace editor {

namespace {

// Importers recurse as deep as the file nests; only what is touched takes memory.
constexpr uint stackBytes = 512u << 20;
constexpr double smallestReport = 0.01;

} // namespace

struct SceneLoader::Job
{
    QString path;
    std::unique_ptr<QThread> thread;
    std::atomic<bool> isCanceled{false};
    double reported = 0;
    SceneImport result;
};

SceneLoader::SceneLoader(QObject* parent) : QObject(parent) {}

SceneLoader::~SceneLoader()
{
    for (const auto& job : m_running)
        job->isCanceled = true;
    for (const auto& job : m_running)
        job->thread->wait();
}

void SceneLoader::load(const QString& path)
{
    cancel();
    m_job = std::make_shared<Job>();
    m_job->path = path;
    m_job->thread.reset(QThread::create([this, job = m_job.get()] { run(*job); }));
    m_job->thread->setStackSize(stackBytes);
    connect(m_job->thread.get(), &QThread::finished, this,
            [this, job = std::weak_ptr<Job>(m_job)] { finish(job.lock()); });
    m_running.push_back(m_job);
    m_job->thread->start();
    Q_EMIT loadingChanged();
    Q_EMIT progressChanged(path, 0);
}

void SceneLoader::cancel()
{
    if (!m_job)
        return;
    const std::shared_ptr<Job> job = std::exchange(m_job, nullptr);
    job->isCanceled = true;
    Q_EMIT loadingChanged();
    Q_EMIT canceled(job->path);
}

QStringList SceneLoader::namePatterns()
{
    return importPatterns();
}

// In the job's thread. The loader outlives it.
void SceneLoader::run(Job& job)
{
    job.result = importScene(job.path, [this, &job](double progress) {
        if (progress - job.reported >= smallestReport) {
            job.reported = progress;
            QMetaObject::invokeMethod(
                this, [this, &job, progress] { report(job, progress); }, Qt::QueuedConnection);
        }
        return !job.isCanceled;
    });
}

void SceneLoader::report(const Job& job, double progress)
{
    if (m_job.get() == &job)
        Q_EMIT progressChanged(job.path, progress);
}

void SceneLoader::finish(const std::shared_ptr<Job>& job)
{
    m_running.erase(std::remove(m_running.begin(), m_running.end(), job), m_running.end());
    // It has only just left its function.
    job->thread->wait();
    if (job != m_job)
        return;
    m_job.reset();
    Q_EMIT loadingChanged();
    if (job->result.root)
        Q_EMIT loaded(job->result.root, job->path);
    else
        Q_EMIT failed(job->path, job->result.error);
}

} // namespace editor
