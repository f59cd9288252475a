#include "library_count.h"

#include <editor/files/scene_import.h>

#include <scene/scene_samples.h>
#include <support/mutation.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <atomic>
#include <cstdio>
#include <map>
#include <mutex>
#include <thread>

#include <sys/resource.h>

// Opens every scene of a folder, then mutated copies of them, as the editor does, and prints what
// came of it. Fails when an import has no outcome, takes too long, or gives another number of
// objects than the import library has nodes for. A crash of the importer is an outcome; one of this
// program is not.

namespace {

using namespace editor;

constexpr qint64 largestMutated = 1 << 20;
// The importer is limited in processor time, of which a busy machine gives little.
constexpr double longestSeconds = 240;
constexpr int threadCount = 2;

const char* outcomeOf(const SceneImport& import)
{
    if (import.root)
        return "opened";
    const std::pair<const char*, const char*> byReason[] = {
        {"crashed on it", "importer crashed"}, {"gave up on it", "library's assertion failed"},
        {"takes too long", "time limit"},      {"more memory", "memory limit"},
        {"handed back", "damaged hand-over"},
    };
    for (const auto& [part, outcome] : byReason) {
        if (import.error.contains(QLatin1String(part)))
            return outcome;
    }
    return import.error.isEmpty() ? "no outcome" : "refused with a reason";
}

/// Counts of outcomes and the worst time. Safe to use from several threads.
class Tally
{
public:
    void add(const QString& file, const SceneImport& import, double seconds)
    {
        if ((!import.root && import.error.isEmpty()) || seconds > longestSeconds)
            fail(file, QStringLiteral("no outcome after %1 s").arg(seconds));
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_counts[outcomeOf(import)];
        m_worst = std::max(m_worst, seconds);
    }
    void fail(const QString& file, const QString& what)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_failures;
        std::printf("WRONG %s: %s\n", qPrintable(file), qPrintable(what));
    }
    bool print(const char* title)
    {
        std::printf("%s: slowest %.1f s\n", title, m_worst);
        for (const auto& [outcome, count] : m_counts)
            std::printf("  %5d %s\n", count, outcome.c_str());
        std::printf("  %5d wrong\n", m_failures);
        return m_failures == 0;
    }

private:
    std::mutex m_mutex;
    std::map<std::string, int> m_counts;
    double m_worst = 0;
    int m_failures = 0;
};

SceneImport importTimed(const QString& shownAs, const QString& path, Tally& tally)
{
    QElapsedTimer timer;
    timer.start();
    SceneImport import = importScene(path);
    tally.add(shownAs, import, double(timer.elapsed()) / 1000);
    return import;
}

QStringList scenesIn(const QString& folder)
{
    QStringList scenes;
    QDirIterator files(folder, importPatterns(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        scenes.append(files.next());
    scenes.sort();
    return scenes;
}

template <typename Work>
void inThreads(int count, const Work& work)
{
    std::atomic<int> next{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&] {
            for (int at = next++; at < count; at = next++)
                work(at);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

void openScene(const QString& path, int expected, Tally& tally)
{
    const SceneImport import = importTimed(path, path, tally);
    if (!import.root || expected == test::unknownCount)
        return;
    // A root that only holds the others is the scene itself.
    const int objects = int(test::allBelow(*import.root).size());
    if (objects != expected && objects != expected - 1)
        tally.fail(path, QStringLiteral("%1 objects, not %2").arg(objects).arg(expected));
}

bool openAll(const QStringList& scenes)
{
    Tally tally;
    // Forks, which is safe while there is one thread.
    std::vector<int> expected;
    for (const QString& path : scenes)
        expected.push_back(test::objectsByLibrary(path));
    inThreads(scenes.size(),
              [&](int at) { openScene(scenes[at], expected[std::size_t(at)], tally); });
    return tally.print(qPrintable(QStringLiteral("%1 scenes").arg(scenes.size())));
}

bool openMutated(const QStringList& scenes, int count, unsigned seed)
{
    QStringList originals;
    for (const QString& scene : scenes) {
        const qint64 size = QFileInfo(scene).size();
        if (size > 0 && size <= largestMutated)
            originals.append(scene);
    }
    Tally tally;
    inThreads(originals.isEmpty() ? 0 : count, [&](int at) {
        std::mt19937 random(seed + unsigned(at));
        const QString& original = originals[int(random() % unsigned(originals.size()))];
        const QTemporaryDir folder;
        const QString copy = test::copyMutated(original, folder.path(), random);
        importTimed(QStringLiteral("mutation %1 of %2").arg(at).arg(original), copy, tally);
    });
    return tally.print(qPrintable(QStringLiteral("%1 mutated scenes").arg(count)));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption mutations("mutations", "How many mutated files to open.", "count",
                                       "2000");
    const QCommandLineOption seed("seed", "Where the mutations begin.", "number", "1");
    parser.setApplicationDescription("Opens all scenes of folders, and mutated copies of them.");
    parser.addHelpOption();
    parser.addOptions({mutations, seed});
    parser.addPositionalArgument("folders", "Folders with scenes.");
    parser.process(application);

    QStringList scenes;
    for (const QString& folder : parser.positionalArguments())
        scenes += scenesIn(folder);
    bool isRight = !scenes.isEmpty() && openAll(scenes);
    isRight = openMutated(scenes, parser.value(mutations).toInt(), parser.value(seed).toUInt()) &&
              isRight;
    rusage importers{};
    getrusage(RUSAGE_CHILDREN, &importers);
    std::printf("largest importer: %ld MB\n", importers.ru_maxrss / 1024);
    return isRight ? EXIT_SUCCESS : EXIT_FAILURE;
}
