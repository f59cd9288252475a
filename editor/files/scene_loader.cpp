#include "scene_loader.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace editor {

namespace {

constexpr double smallestReport = 0.01;
constexpr std::chrono::milliseconds longestWait{500};

} // namespace

/// What the thread of one file shares with the loader.
struct SceneLoader::Job
{
    /// Queues a call to the loader while there is one.
    template <typename Call>
    void post(Call call)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (loader)
            QMetaObject::invokeMethod(loader, std::move(call), Qt::QueuedConnection);
    }

    QString path;
    Reader read;
    std::atomic<bool> isCanceled{false};
    /// Of the thread until it has ended.
    SceneImport result;
    double reported = 0;

    std::mutex mutex;
    std::condition_variable ended;
    SceneLoader* loader = nullptr;
    bool hasEnded = false;
};

SceneLoader::SceneLoader(QObject* parent) : QObject(parent) {}

SceneLoader::~SceneLoader()
{
    for (const auto& job : m_running) {
        job->isCanceled = true;
        const std::lock_guard<std::mutex> lock(job->mutex);
        job->loader = nullptr;
    }
    const auto latest = std::chrono::steady_clock::now() + longestWait;
    for (const auto& job : m_running) {
        std::unique_lock<std::mutex> lock(job->mutex);
        job->ended.wait_until(lock, latest, [&job] { return job->hasEnded; });
    }
}

void SceneLoader::load(const QString& path)
{
    load(path, [path](const ImportProgress& progress) { return importScene(path, progress); });
}

void SceneLoader::load(const QString& path, Reader read)
{
    cancel();
    m_job = std::make_shared<Job>();
    m_job->path = path;
    m_job->read = std::move(read);
    m_job->loader = this;
    m_running.push_back(m_job);
    std::thread([job = m_job] { run(job); }).detach();
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

// In the job's thread.
void SceneLoader::run(const std::shared_ptr<Job>& job)
{
    job->result = job->read([&job](double progress) {
        if (progress - job->reported >= smallestReport) {
            job->reported = progress;
            job->post([job, progress] {
                if (job->loader->m_job == job)
                    Q_EMIT job->loader->progressChanged(job->path, progress);
            });
        }
        return !job->isCanceled;
    });
    if (job->isCanceled)
        job->result = {};
    job->post([job] { job->loader->finish(job); });
    const std::lock_guard<std::mutex> lock(job->mutex);
    job->hasEnded = true;
    job->ended.notify_all();
}

void SceneLoader::finish(const std::shared_ptr<Job>& job)
{
    m_running.erase(std::remove(m_running.begin(), m_running.end(), job), m_running.end());
    if (job != m_job) {
        // Cancelled at the last moment: a large scene is not freed here.
        std::thread([result = std::move(job->result), read = std::move(job->read)] {}).detach();
        return;
    }
    m_job.reset();
    Q_EMIT loadingChanged();
    if (job->result.root)
        Q_EMIT loaded(job->result.root, job->path, job->result.notes);
    else
        Q_EMIT failed(job->path, job->result.error);
}

} // namespace editor
