#include <host/undo/commit_changes_scope.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <functional>

using Zar::ChangesController;
using Zar::CommitChangesScope;

namespace {

/// Sets an integer; the changes of one integer are joined when `joins` is set.
class SetNumber : public Zar::IChange
{
public:
    SetNumber(int& number, int value, bool joins)
        : m_number(number), m_before(number), m_after(value), m_joins(joins)
    {
        number = value;
    }
    void undo() override { m_number = m_before; }
    void redo() override { m_number = m_after; }
    const void* subject() const noexcept override { return m_joins ? &m_number : nullptr; }
    void absorb(IChange& later) override { m_after = static_cast<SetNumber&>(later).m_after; }
    bool isVoid() const override { return m_before == m_after; }

private:
    int& m_number;
    int m_before;
    int m_after;
    bool m_joins;
};

class ChangesControllerTest : public testing::Test
{
protected:
    void set(int& target, int value, bool joins = false)
    {
        controller.record(std::make_unique<SetNumber>(target, value, joins), "Set number");
    }

    ChangesController controller;
    int a = 0;
    int b = 0;
};

} // namespace

TEST_F(ChangesControllerTest, aScopeIsOneStepUnderTheOutermostName)
{
    {
        const CommitChangesScope outer("Outer", &controller);
        set(a, 1);
        {
            const CommitChangesScope inner("Inner", &controller);
            set(b, 2);
            set(a, 3);
        }
        EXPECT_EQ(0, controller.stack().count());
    }
    ASSERT_EQ(1, controller.stack().count());
    EXPECT_EQ("Outer", controller.stack().undoText());
    EXPECT_EQ(3, a);
    controller.stack().undo();
    EXPECT_EQ(0, a);
    EXPECT_EQ(0, b);
    controller.stack().redo();
    EXPECT_EQ(3, a);
    EXPECT_EQ(2, b);
}

TEST_F(ChangesControllerTest, aScopeThatYieldsIsCalledWhatIsDoneInIt)
{
    const auto stepWith = [this](const std::vector<const char*>& inner) {
        {
            const CommitChangesScope gesture("Hide", &controller,
                                             CommitChangesScope::CareFlag::YieldName);
            set(a, a + 1);
            for (const char* name : inner) {
                const CommitChangesScope command(name, &controller);
                set(b, b + 1);
            }
            const CommitChangesScope empty("Nothing", &controller);
        }
        return controller.stack().undoText();
    };
    EXPECT_EQ("Hide", stepWith({}));
    EXPECT_EQ("Hide Lamp", stepWith({"Hide Lamp"}));
    EXPECT_EQ("Hide 2 objects", stepWith({"Hide Lamp", "Hide Wall"}));
}

TEST_F(ChangesControllerTest, stepsThatChangeNothingAreNotKept)
{
    {
        const CommitChangesScope scope("Back and forth", &controller);
        set(a, 5, true);
        set(a, 0, true);
    }
    {
        const CommitChangesScope scope("Nothing", &controller);
    }
    EXPECT_EQ(0, controller.stack().count());
    set(a, 7);
    ASSERT_EQ(1, controller.stack().count());
    EXPECT_EQ("Set number", controller.stack().undoText());
}

TEST_F(ChangesControllerTest, changesMadeByUndoingAreNotRecorded)
{
    struct Echo : SetNumber
    {
        using SetNumber::SetNumber;
        void undo() override { echo(); }
        std::function<void()> echo;
    };
    auto echo = std::make_unique<Echo>(a, 1, false);
    echo->echo = [this] { set(b, 9); };
    controller.record(std::move(echo), "Echo");
    controller.stack().undo();
    EXPECT_EQ(9, b);
    EXPECT_EQ(1, controller.stack().count());
    EXPECT_TRUE(controller.stack().canRedo());
}

TEST_F(ChangesControllerTest, aDiscardedScopeIsUndoneAndTheOneAroundItIsNot)
{
    {
        const CommitChangesScope outer("Outer", &controller);
        set(a, 1, true);
        {
            CommitChangesScope inner("Inner", &controller);
            set(a, 2, true);
            set(b, 3);
            set(b, 4);
            inner.discard();
            EXPECT_EQ(1, a);
            EXPECT_EQ(0, b);
            set(b, 5);
        }
        {
            const CommitChangesScope inner("Inner", &controller);
            set(a, 6, true);
        }
    }
    ASSERT_EQ(1, controller.stack().count());
    controller.stack().undo();
    EXPECT_EQ(0, a);
    EXPECT_EQ(0, b);
    controller.stack().redo();
    EXPECT_EQ(6, a);
    EXPECT_EQ(5, b);
    {
        CommitChangesScope scope("Nothing", &controller);
        set(a, 7);
        scope.discard();
    }
    EXPECT_EQ(6, a);
    EXPECT_EQ(1, controller.stack().count());
}

TEST_F(ChangesControllerTest, whatTheStackDropsGoesInParts)
{
    struct Counted : SetNumber
    {
        using SetNumber::SetNumber;
        ~Counted() override { --*alive; }
        int* alive = nullptr;
    };
    int alive = 0;
    {
        const CommitChangesScope scope("Many", &controller);
        for (alive = 0; alive < 100'000; ++alive) {
            auto change = std::make_unique<Counted>(a, a + 1, false);
            change->alive = &alive;
            controller.record(std::move(change), "One of many");
        }
    }
    controller.stack().undo();
    set(b, 1);
    EXPECT_EQ(0, a);
    EXPECT_EQ(100'000, alive);
    QCoreApplication::processEvents();
    EXPECT_GT(100'000, alive);
    while (alive > 0)
        QCoreApplication::processEvents();
    EXPECT_EQ(1, controller.stack().count());
}
