#include <kyr_cpp_utils/signal.h>

#include <gtest/gtest.h>

#include <support/allocations/allocation_count.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using vex::Connection;
using VoidSignal = vex::Signal<void()>;

static_assert(!std::is_copy_constructible_v<Connection> && !std::is_copy_assignable_v<Connection>);
static_assert(std::is_nothrow_move_constructible_v<Connection>);
static_assert(!std::is_copy_constructible_v<VoidSignal> &&
              !std::is_move_constructible_v<VoidSignal>);
static_assert(sizeof(VoidSignal) == sizeof(void*) && sizeof(Connection) == sizeof(void*));

/// Emissions are written down as text: one letter a call.
class SignalTest : public ::testing::Test
{
protected:
    auto logs(std::string text)
    {
        return [this, text] { m_log += text; };
    }

    std::string emitted()
    {
        m_log.clear();
        m_signal();
        return m_log;
    }

    std::string m_log;
    VoidSignal m_signal;
};

TEST_F(SignalTest, callsInOrderOfKeyThenConnection)
{
    const Connection slots[] = {
        m_signal.connect(logs("c")),     m_signal.connect(logs("d")),
        m_signal.connect(logs("a"), -1), m_signal.connect(logs("f"), 2147483647),
        m_signal.connect(logs("b"), -1), m_signal.connect(logs("e"), 0)};
    EXPECT_EQ(emitted(), "abcdef");
    EXPECT_EQ(emitted(), "abcdef");
}

TEST_F(SignalTest, handleEndsItsSubscription)
{
    Connection a = m_signal.connect(logs("a"));
    Connection b = m_signal.connect(logs("b"));
    {
        const Connection dropped = m_signal.connect(logs("x"));
        EXPECT_EQ(emitted(), "abx");
    }
    EXPECT_EQ(emitted(), "ab");

    Connection moved = std::move(a);
    EXPECT_FALSE(a.isConnected());
    EXPECT_TRUE(moved.isConnected());
    a.disconnect();
    EXPECT_EQ(emitted(), "ab");

    b = std::move(moved);
    EXPECT_EQ(emitted(), "a");
    b.disconnect();
    b.disconnect();
    EXPECT_FALSE(b.isConnected());
    EXPECT_EQ(emitted(), "");
}

TEST_F(SignalTest, slotDisconnectsItselfAndOthers)
{
    const auto token = std::make_shared<int>();
    Connection self, later;
    const Connection first = m_signal.connect(logs("a"));
    self = m_signal.connect([&, token] {
        self.disconnect();
        later.disconnect();
        m_log += token.use_count() == 2 ? "b" : "the callable is gone while it runs";
    });
    later = m_signal.connect(logs("x"));
    const Connection last = m_signal.connect(logs("c"));
    EXPECT_EQ(emitted(), "abc");
    EXPECT_EQ(token.use_count(), 1);
    EXPECT_EQ(emitted(), "ac");
}

TEST_F(SignalTest, slotConnectedDuringAnEmissionWaitsForTheNext)
{
    std::vector<Connection> added;
    const Connection connector = m_signal.connect([&] {
        m_log += "a";
        if (added.empty()) {
            added.push_back(m_signal.connect(logs("c"), 1));
            added.push_back(m_signal.connect(logs("d"), 1));
        }
    });
    const Connection after = m_signal.connect(logs("b"));
    const Connection last = m_signal.connect(logs("e"), 2);
    EXPECT_EQ(emitted(), "abe");
    EXPECT_EQ(emitted(), "abcde");
}

// A slot belongs to the emission that was begun last when it was connected. An outer emission is
// another one and calls it.
TEST_F(SignalTest, nestedEmissions)
{
    int depth = 0;
    Connection added;
    const Connection outer = m_signal.connect([&] {
        m_log += std::to_string(++depth);
        if (depth == 1)
            m_signal();
        else
            added = m_signal.connect(logs("n"), 1);
        --depth;
    });
    const Connection after = m_signal.connect(logs("a"));
    EXPECT_EQ(emitted(), "12aan");
}

TEST_F(SignalTest, nestedEmissionDisconnectsTheSlotThatRunsOutside)
{
    Connection self;
    bool nested = false;
    self = m_signal.connect([&, token = std::make_shared<std::string>("a")] {
        if (std::exchange(nested, true))
            self.disconnect();
        else
            m_signal();
        m_log += *token;
    });
    const Connection after = m_signal.connect(logs("b"));
    EXPECT_EQ(emitted(), "abab");
    EXPECT_EQ(emitted(), "b");
}

TEST_F(SignalTest, exceptionEndsTheEmissionOnly)
{
    const Connection before = m_signal.connect(logs("a"));
    const auto token = std::make_shared<int>();
    Connection throwing;
    throwing = m_signal.connect([&, token] {
        throwing.disconnect();
        throw std::string("thrown");
    });
    const Connection after = m_signal.connect(logs("b"));
    EXPECT_THROW(emitted(), std::string);
    EXPECT_EQ(m_log, "a");
    EXPECT_EQ(token.use_count(), 1);
    EXPECT_EQ(emitted(), "ab");

    const Connection empty = m_signal.connect(std::function<void()>(), -1);
    EXPECT_THROW(emitted(), std::bad_function_call);
    EXPECT_EQ(m_log, "");
}

TEST_F(SignalTest, allocatesOnceForItselfAndOnceForAConnection)
{
    std::size_t before = test::allocationCount();
    const auto allocations = [&] {
        return test::allocationCount() - std::exchange(before, test::allocationCount());
    };

    m_signal();
    EXPECT_EQ(allocations(), 0u);
    int calls = 0;
    vex::Connection first = m_signal.connect([&] { ++calls; });
    EXPECT_EQ(allocations(), 2u);
    vex::Connection second = m_signal.connect([&] { ++calls; });
    EXPECT_EQ(allocations(), 1u);
    m_signal();
    first.disconnect();
    m_signal();
    second.disconnect();
    m_signal();
    EXPECT_EQ(allocations(), 0u);
    EXPECT_EQ(calls, 3);
}

TEST(SignalResult, isTheLastOneOrNone)
{
    vex::Signal<std::string(int, std::string&)> signal;
    std::string seen;
    EXPECT_EQ(signal(1, seen), std::nullopt);
    const Connection first = signal.connect([](int, std::string& text) { return text += "a"; });
    const Connection second =
        signal.connect([](int number, std::string& text) { return text + std::to_string(number); });
    EXPECT_EQ(signal(7, seen), "a7");
    EXPECT_EQ(seen, "a");
}

TEST(SignalResult, everySlotGetsTheWholeArgument)
{
    vex::Signal<void(std::string)> signal;
    std::string seen;
    const auto take = [&](std::string text) { seen += std::move(text); };
    const Connection slots[] = {signal.connect(take), signal.connect(take)};
    signal("ab");
    EXPECT_EQ(seen, "abab");
}

} // namespace
