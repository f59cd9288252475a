#include <kyr_cpp_utils/signal.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

// Faults here are races: run under the thread and the address sanitizer.
namespace {

using vex::Connection;
using TestSignal = vex::Signal<void(int)>;

constexpr int rounds = 10000;

/// Starts threads together, round by round. The last to arrive would be ahead of those who wait for
/// it: it is held back, a different time each round, so that the rounds try every overlap.
class StartLine
{
public:
    explicit StartLine(int threads) : m_threads(threads) {}

    void wait()
    {
        const int arrival = m_arrived.fetch_add(1);
        const int round = arrival / m_threads;
        const int full = (round + 1) * m_threads;
        for (int turn = 0; m_arrived.load() < full; ++turn) {
            if (turn > 500)
                std::this_thread::yield();
        }
        for (volatile int delay = arrival + 1 == full ? round % 256 : 0; delay > 0;)
            delay = delay - 1;
    }

private:
    const int m_threads;
    std::atomic<int> m_arrived{0};
};

/// A callable that knows whether it is alive, and counts the living ones.
class Probe
{
public:
    explicit Probe(std::atomic<int>& living) : m_living(&living) { ++*m_living; }
    Probe(const Probe& other) : Probe(*other.m_living) {}
    ~Probe()
    {
        --*m_living;
        m_alive = false;
    }
    Probe& operator=(const Probe&) = delete;

    void operator()(int) const
    {
        if (!m_alive)
            ADD_FAILURE() << "called after its destruction";
    }

private:
    std::atomic<int>* m_living;
    volatile bool m_alive = true;
};

void runTogether(const std::vector<std::function<void()>>& bodies)
{
    std::vector<std::thread> threads;
    for (const auto& body : bodies)
        threads.emplace_back(body);
    for (std::thread& thread : threads)
        thread.join();
}

TEST(SignalStress, connectDisconnectAndEmitTogether)
{
    std::atomic<int> living{0};
    std::atomic<int> steadyCalls{0};
    int emissions = 0;
    {
        TestSignal signal;
        const Connection steady = signal.connect([&](int count) { steadyCalls += count; });
        std::atomic<bool> churning{true};
        const auto churn = [&](int seed) {
            std::vector<Connection> slots(8);
            for (int step = 0; step < 100000; ++step) {
                Connection& slot = slots[std::size_t(step * seed) % slots.size()];
                slot.disconnect();
                slot = signal.connect(Probe(living), step % 3 - 1);
                if (step % 5 == 0)
                    slot.disconnect();
            }
        };
        std::thread emitter([&] {
            for (; churning; ++emissions)
                signal(1);
        });
        runTogether({[&] { churn(3); }, [&] { churn(5); }});
        churning = false;
        emitter.join();
    }
    EXPECT_EQ(steadyCalls, emissions);
    EXPECT_EQ(living, 0);
}

TEST(SignalStress, firstConnectionsRace)
{
    std::atomic<int> calls{0};
    std::vector<TestSignal> signals(rounds);
    StartLine line(2);
    const auto connectToAll = [&](std::vector<Connection>& handles) {
        for (TestSignal& signal : signals) {
            line.wait();
            handles.push_back(signal.connect([&](int) { ++calls; }));
        }
    };
    std::vector<Connection> handles[2];
    runTogether({[&] { connectToAll(handles[0]); }, [&] { connectToAll(handles[1]); }});
    for (TestSignal& signal : signals)
        signal(0);
    EXPECT_EQ(calls, 2 * rounds);
}

TEST(SignalStress, destructionRacesDisconnectAndEmission)
{
    std::atomic<int> living{0};
    StartLine line(4);
    std::unique_ptr<TestSignal> signal;
    std::vector<Connection> slots;
    std::atomic<int> entered{0};
    const auto destroy = [&] {
        for (int round = 0; round < rounds; ++round) {
            signal = std::make_unique<TestSignal>();
            slots.clear();
            entered = 0;
            // The emission has to begin before the signal goes.
            slots.push_back(signal->connect([&](int) { entered = 1; }, -1));
            for (int index = 0; index < 6; ++index)
                slots.push_back(signal->connect(Probe(living), index % 2));
            line.wait();
            while (!entered)
                std::this_thread::yield();
            signal.reset();
            line.wait();
            EXPECT_EQ(living, 0);
        }
    };
    const auto disconnect = [&](std::size_t first) {
        for (int round = 0; round < rounds; ++round) {
            line.wait();
            for (std::size_t index = first; index < 7; index += 2)
                slots[index].disconnect();
            line.wait();
        }
    };
    const auto emit = [&] {
        for (int round = 0; round < rounds; ++round) {
            line.wait();
            (*signal)(round);
            line.wait();
        }
    };
    runTogether({destroy, emit, [&] { disconnect(1); }, [&] { disconnect(2); }});
}

} // namespace
