#include <kyr_cpp_utils/signal.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <utility>

namespace {
std::atomic<std::size_t> allocationCount{0};
}

void* operator new(std::size_t size)
{
    ++allocationCount;
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

TEST(SignalAllocations, OneASignalAndOneAConnection)
{
    std::size_t before = allocationCount.load();
    const auto allocations = [&] {
        return allocationCount.load() - std::exchange(before, allocationCount.load());
    };

    vex::Signal<void()> signal;
    signal();
    EXPECT_EQ(allocations(), 0u);
    int calls = 0;
    vex::Connection first = signal.connect([&] { ++calls; });
    EXPECT_EQ(allocations(), 2u);
    vex::Connection second = signal.connect([&] { ++calls; });
    EXPECT_EQ(allocations(), 1u);
    signal();
    first.disconnect();
    signal();
    second.disconnect();
    signal();
    EXPECT_EQ(allocations(), 0u);
    EXPECT_EQ(calls, 3);
}

} // namespace
