#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>
#include <thread>

void registerSignalBenchmarks();

// A second thread lives while everything is measured: in a program with one thread the C library
// leaves out its locks, which no editor can count on.
int main(int argc, char** argv)
{
    std::mutex mutex;
    std::condition_variable wake;
    bool done = false;
    std::thread parked([&] {
        std::unique_lock lock(mutex);
        wake.wait(lock, [&] { return done; });
    });

    benchmark::Initialize(&argc, argv);
    registerSignalBenchmarks();
    const bool understood = !benchmark::ReportUnrecognizedArguments(argc, argv);
    if (understood)
        benchmark::RunSpecifiedBenchmarks();

    {
        const std::lock_guard lock(mutex);
        done = true;
    }
    wake.notify_one();
    parked.join();
    return understood ? 0 : 1;
}
