#include <host/core/debug_message.h>
#include <host/core/smart_pointer.h>
#include <host/core/stack_tracker.h>
#include <host/reflection/fuzzy_function.h>
#include <support/message_log.h>

#include <gtest/gtest.h>

#include <thread>

TEST(DebugMessage, textsOfAnyLengthReachTheSinkInPlace)
{
    test::MessageLog log;
    const std::string longText(100000, 'x');
    Zar::DebugMessageHelper(0, 5).message("%s!", longText.c_str());
    {
        test::MessageLog inner;
        Zar::DebugMessageHelper(0, 2).message("inner %d", 7);
        EXPECT_EQ(std::vector<std::string>{"2 inner 7"}, inner.take());
    }
    EXPECT_TRUE(Zar::verify(true, "holds", "file"));
    EXPECT_FALSE(Zar::verify(false, "m_count > 0", "some_file", 12));
    EXPECT_EQ((std::vector<std::string>{"5 " + longText + "!",
                                        "! ASSERTION FAILED: m_count > 0\r\nsome_file(12)\r\n"}),
              log.take());
}

TEST(StackTracker, entriesBelongToTheirThreadAndLeaveWithTheirScope)
{
    const Zar::StackTrackerScope outer("outer", "file");
    {
        const Zar::StackTrackerScope inner("inner", "file");
        EXPECT_EQ((std::vector<std::string>{"outer", "inner"}), Zar::StackTracker::entries());
        std::thread([] {
            EXPECT_TRUE(Zar::StackTracker::entries().empty());
            Zar::StackTracker::pop();
        }).join();
    }
    EXPECT_EQ(std::vector<std::string>{"outer"}, Zar::StackTracker::entries());
}

TEST(SmartPointer, adoptingAnUnreferencedObjectIsReported)
{
    class Counted : public Zar::SafeReferenceCount
    {
    public:
        explicit Counted(bool& alive) : m_alive(alive) { m_alive = true; }
        ~Counted() override { m_alive = false; }

    private:
        bool& m_alive;
    };
    test::MessageLog log;
    bool alive = false;
    {
        Zar::SmartPointer<Counted> first(new Counted(alive));
        Zar::SmartPointer<Counted> second = first;
        const Zar::SmartPointer<Counted> adopted(second.release(), Zar::AdoptReference());
        EXPECT_EQ(2, first->refCount());
    }
    EXPECT_FALSE(alive);
    EXPECT_TRUE(log.take().empty());
    auto* bare = new Counted(alive);
    Zar::SmartPointer<Counted> wrong(bare, Zar::AdoptReference());
    EXPECT_EQ(1u, log.take().size());
    bare->incRef();
}

TEST(FuzzyFunction, takesCallablesWithFewerArguments)
{
    using Function = kyr::FuzzyFunction<int(int, const std::string&)>;
    EXPECT_EQ(1, Function([] { return 1; })(5, "x"));
    EXPECT_EQ(5, Function([](int number) { return number; })(5, "x"));
    EXPECT_FALSE(Function(std::function<int()>()));
    EXPECT_FALSE(Function(static_cast<int (*)(int)>(nullptr)));
    EXPECT_THROW(Function()(1, ""), std::bad_function_call);
}
