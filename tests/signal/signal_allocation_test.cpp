#include <kyr_cpp_utils/signal.h>

#include <gtest/gtest.h>

#include <support/allocations/allocation_count.h>

#include <utility>

namespace {

TEST(SignalAllocations, OneASignalAndOneAConnection)
{
    std::size_t before = test::allocationCount();
    const auto allocations = [&] {
        return test::allocationCount() - std::exchange(before, test::allocationCount());
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
