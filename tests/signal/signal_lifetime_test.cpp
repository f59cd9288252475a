#include <kyr_cpp_utils/signal.h>

#include <host/core/debug_message.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using vex::Connection;
using VoidSignal = vex::Signal<void()>;

/// Runs a function when the last copy of the callable that holds it is destroyed.
std::shared_ptr<void> onDestruction(std::function<void()> function)
{
    return {nullptr, [function](void*) { function(); }};
}

TEST(SignalLifetime, handlesOutliveTheSignal)
{
    auto signal = std::make_unique<VoidSignal>();
    const auto token = std::make_shared<int>();
    Connection disconnected = signal->connect([token] {});
    Connection dropped = signal->connect([token] {});
    signal.reset();
    EXPECT_EQ(token.use_count(), 1);
    EXPECT_FALSE(disconnected.isConnected());
    disconnected.disconnect();
}

/// The slot `destroyer` disconnects all slots before it, destroys the signal, drops the last handle
/// and runs on.
void destroyInsideSlot(int count, int destroyer, bool inNestedEmission)
{
    auto signal = std::make_unique<VoidSignal>();
    const auto token = std::make_shared<int>();
    std::vector<Connection> slots;
    int calls = 0;
    bool nested = !inNestedEmission;
    for (int index = 0; index < count; ++index) {
        slots.push_back(signal->connect([&, index, token] {
            ++calls;
            if (index != destroyer)
                return;
            if (!std::exchange(nested, true))
                return (*signal)();
            slots.erase(slots.begin(), slots.begin() + destroyer);
            signal.reset();
            slots.pop_back();
            EXPECT_EQ(token.use_count(), 2) << "only the running callable is left";
        }));
    }
    (*signal)();
    EXPECT_EQ(calls, (destroyer + 1) * (inNestedEmission ? 2 : 1));
    EXPECT_EQ(token.use_count(), 1);
    for (const Connection& slot : slots)
        EXPECT_FALSE(slot.isConnected());
}

TEST(SignalLifetime, destructionInsideASlotEndsTheEmission)
{
    for (const bool nested : {false, true}) {
        destroyInsideSlot(1, 0, nested);
        destroyInsideSlot(5, 0, nested);
        destroyInsideSlot(5, 4, nested);
        destroyInsideSlot(100, 98, nested);
    }
}

TEST(SignalLifetime, callableDestructorUsesTheSignal)
{
    auto signal = std::make_unique<VoidSignal>();
    std::string log;
    std::vector<Connection> reconnected;
    const auto reconnect = [&] {
        (*signal)();
        reconnected.push_back(signal->connect([&] { log += "r"; }));
    };
    Connection plain = signal->connect([&] { log += "p"; });
    Connection byHandle = signal->connect([guard = onDestruction(reconnect)] {});
    byHandle.disconnect();
    EXPECT_EQ(log, "p");
    (*signal)();
    EXPECT_EQ(log, "ppr");

    Connection self;
    self = signal->connect(
        [&, guard = onDestruction([&] { plain.disconnect(); })] { self.disconnect(); });
    log.clear();
    (*signal)();
    (*signal)();
    EXPECT_EQ(log, "prr");

    VoidSignal* raw = signal.get();
    const Connection bySignal = signal->connect([&, guard = onDestruction([&, raw] {
                                                        (*raw)();
                                                        reconnected.push_back(raw->connect([] {}));
                                                    })] {});
    log.clear();
    signal.reset();
    EXPECT_EQ(log, "");
    EXPECT_FALSE(reconnected.back().isConnected());
}

TEST(SignalLifetime, callableOwnsItsHandleOrItsSignal)
{
    VoidSignal signal;
    auto handle = std::make_shared<Connection>();
    *handle = signal.connect([handle] {});
    const std::weak_ptr<Connection> watched = handle;
    Connection* ownedByCallable = std::exchange(handle, nullptr).get();
    ownedByCallable->disconnect();
    EXPECT_TRUE(watched.expired());

    auto owned = std::make_shared<VoidSignal>();
    Connection slot = owned->connect([owned] {});
    const std::weak_ptr<VoidSignal> watchedSignal = owned;
    owned.reset();
    slot.disconnect();
    EXPECT_TRUE(watchedSignal.expired());
}

/// A signal without a slot set.
class SetlessSignal final : public vex::signal_details::SignalImplBase
{
public:
    Zar::SmartPointer<vex::signal_details::SlotHolderBase>
    detachSlot(vex::signal_details::SlotHolderBase& slot) override
    {
        return {&slot};
    }
};

TEST(SignalFaults, areReported)
{
    using Record = vex::signal_details::RegularSlotHolder<void(), std::function<void()>>;
    std::vector<Zar::DebugMessage> messages;
    const Zar::DebugMessageSinkGuard sink(
        [&](const auto& message) { messages.push_back(message); });
    SetlessSignal signal;

    const auto token = std::make_shared<int>();
    Zar::SmartPointer<Record>(new Record(signal, 0, [token] {}));
    EXPECT_EQ(token.use_count(), 1);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_TRUE(messages[0].critical);
    EXPECT_EQ(messages[0].file, "kyr_cpp_utils/signal");
    EXPECT_EQ(messages[0].line, 113u);
    EXPECT_EQ(messages[0].text, "ASSERTION FAILED: !signal()\r\nkyr_cpp_utils/signal(113)\r\n");

    const Zar::SmartPointer<Record> released(new Record(signal, 0, std::function<void()>()));
    EXPECT_THROW(released->call(), std::bad_function_call);
    released->finalize();
    EXPECT_THROW(released->call(), std::bad_optional_access);
}

} // namespace
