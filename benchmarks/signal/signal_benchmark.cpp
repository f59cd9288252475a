#include "contenders.h"

#include <atomic>
#include <malloc.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

template <typename Contender>
using Handles = std::vector<typename Contender::Handle>;

template <typename Contender>
Handles<Contender> connectMany(Contender& signal, std::int64_t count)
{
    Handles<Contender> handles;
    for (std::int64_t index = 0; index < count; ++index)
        handles.push_back(signal.connect());
    return handles;
}

/// range(0) slots. Items are slot calls.
template <typename Contender>
void emitTo(benchmark::State& state)
{
    Contender signal;
    const auto handles = connectMany(signal, state.range(0));
    for (auto _ : state)
        signal.emit();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename Contender>
void emitNeverConnected(benchmark::State& state)
{
    Contender signal;
    benchmark::DoNotOptimize(&signal);
    for (auto _ : state) {
        signal.emit();
        benchmark::ClobberMemory();
    }
}

template <typename Contender>
void emitAllDisconnected(benchmark::State& state)
{
    Contender signal;
    auto handle = signal.connect();
    Contender::disconnect(handle);
    for (auto _ : state)
        signal.emit();
}

/// One slot comes and goes beside range(0) others.
template <typename Contender>
void connectAndDisconnect(benchmark::State& state)
{
    Contender signal;
    const auto others = connectMany(signal, state.range(0));
    for (auto _ : state) {
        auto handle = signal.connect();
        Contender::disconnect(handle);
    }
}

/// Every benchmark thread emits one shared signal of range(0) slots.
template <typename Contender>
void emitOnThreads(benchmark::State& state)
{
    static std::unique_ptr<Contender> signal;
    static Handles<Contender> handles;
    if (state.thread_index() == 0) {
        signal = std::make_unique<Contender>();
        for (std::int64_t index = 0; index < state.range(0); ++index)
            handles.push_back(signal->connect());
    }
    for (auto _ : state)
        signal->emit();
    if (state.thread_index() == 0) {
        handles.clear();
        signal.reset();
    }
}

/// Emits to 10 slots while another thread connects and disconnects an eleventh.
template <typename Contender>
void emitWhileConnecting(benchmark::State& state)
{
    Contender signal;
    const auto handles = connectMany(signal, 10);
    std::atomic<bool> running{true};
    std::uint64_t connects = 0;
    std::thread other([&] {
        for (; running; ++connects) {
            auto handle = signal.connect();
            Contender::disconnect(handle);
        }
    });
    for (auto _ : state)
        signal.emit();
    running = false;
    other.join();
    state.counters["connects_per_s"] =
        benchmark::Counter(double(connects), benchmark::Counter::kIsRate);
}

/// Heap bytes of a connection as the allocator counts them, handle included, and of a signal.
template <typename Contender>
void memoryOfConnection(benchmark::State& state)
{
    constexpr std::int64_t count = 1000;
    double bytes = 0;
    for (auto _ : state) {
        Contender signal;
        auto first = signal.connect();
        const auto before = mallinfo2().uordblks;
        const auto handles = connectMany(signal, count);
        bytes = double(mallinfo2().uordblks - before) / count;
    }
    state.counters["bytes_per_connection"] = bytes;
}

template <typename Contender>
void registerContender(const std::string& name)
{
    const auto add = [&name](const char* what, auto* function) {
        return benchmark::RegisterBenchmark((std::string(what) + "/" + name).c_str(), function);
    };
    for (const int slots : {1, 10, 100, 1000})
        add("emit", emitTo<Contender>)->Arg(slots);
    add("emit_never_connected", emitNeverConnected<Contender>);
    add("emit_all_disconnected", emitAllDisconnected<Contender>);
    for (const int others : {0, 1000})
        add("connect_disconnect", connectAndDisconnect<Contender>)->Arg(others);
    if constexpr (Contender::threadSafe) {
        for (const int slots : {1, 10, 100})
            add("emit_on_threads", emitOnThreads<Contender>)->Arg(slots)->Threads(2)->UseRealTime();
        add("emit_while_connecting", emitWhileConnecting<Contender>)->UseRealTime();
    }
    add("memory", memoryOfConnection<Contender>)->Iterations(1);
}

} // namespace

void registerSignalBenchmarks()
{
    registerContender<OurSignal>("ours");
    registerContender<BoostSignal>("boost_signals2");
    registerContender<SigcSignal>("sigcpp");
    registerContender<QtDirectSignal>("qt_direct");
    for (const int slots : {1, 10, 100, 1000})
        benchmark::RegisterBenchmark("emit/bare_loop", emitTo<BareLoop>)->Arg(slots);
}
