#include <clipboard/fake_clipboard.h>
#include <host/core/stack_tracker.h>
#include <tools/common/string_utils.h>

#include <gtest/gtest.h>

namespace {

using test::FakeClipboard;

class ClipboardText : public testing::Test
{
protected:
    std::shared_ptr<FakeClipboard> m_clipboard = std::make_shared<FakeClipboard>();
    FakeClipboard::Guard m_guard{m_clipboard};
};

TEST_F(ClipboardText, copyHandsOverTheTextAndOneNulOrEndsWithTheStepThatFails)
{
    const std::tuple<const char*, const char*, bool, std::string> rows[] = {
        {"", "open allocate empty set close", true, std::string("text\0", 5)},
        {"open", "open", false, "before"},
        {"allocate", "open allocate close", false, "before"},
        {"empty", "open allocate empty close", false, "before"},
        // Nobody asks whether the clipboard took the text.
        {"set", "open allocate empty set close", true, ""},
    };
    for (const auto& [failing, log, result, left] : rows) {
        m_clipboard->text = "before";
        m_clipboard->failing = failing;
        EXPECT_EQ(Zar::StringUtils::copyToClipboardT(std::string("text")), result);
        EXPECT_EQ(m_clipboard->takeLog(), log);
        EXPECT_EQ(m_clipboard->text.value_or(""), left) << failing;
    }
}

TEST_F(ClipboardText, readsUpToTheFirstNul)
{
    std::string text = "untouched";
    EXPECT_FALSE(Zar::StringUtils::canCopyFromClipboardT<char>());
    EXPECT_FALSE(Zar::StringUtils::copyFromClipboardT(text));
    EXPECT_EQ(text, "untouched");
    m_clipboard->text = std::string("cut\0here", 8);
    m_clipboard->takeLog();
    EXPECT_TRUE(Zar::StringUtils::canCopyFromClipboardT<char>());
    EXPECT_TRUE(Zar::StringUtils::copyFromClipboardT(text));
    EXPECT_EQ(text, "cut");
    EXPECT_EQ(m_clipboard->takeLog(), "open close open get close");

    m_clipboard->failing = "open";
    EXPECT_FALSE(Zar::StringUtils::canCopyFromClipboardT<char>());
    EXPECT_FALSE(Zar::StringUtils::copyFromClipboardT(text));
    EXPECT_EQ(text, "cut");
    EXPECT_EQ(m_clipboard->takeLog(), "open open");
}

TEST_F(ClipboardText, opensOnceAndWorksOnlyWhileOpen)
{
    using namespace Zar::platform;
    m_clipboard->text = "before";
    EXPECT_FALSE(EmptyClipboard());
    EXPECT_FALSE(IsClipboardFormatAvailable(textFormat));
    EXPECT_EQ(GetClipboardData(textFormat), nullptr);
    EXPECT_FALSE(SetClipboardData(textFormat, GlobalAlloc(movableMemory, 1)));
    EXPECT_TRUE(OpenClipboard(nullptr));
    EXPECT_FALSE(OpenClipboard(nullptr));
    CloseClipboard();
    CloseClipboard();
    EXPECT_EQ(m_clipboard->takeLog(), "allocate open close");
    EXPECT_EQ(*m_clipboard->text, "before");
}

TEST_F(ClipboardText, operationsAreTrackedWhileTheyRun)
{
    struct Watching : FakeClipboard
    {
        bool open() override
        {
            entries = Zar::StackTracker::entries();
            return false;
        }
        std::vector<std::string> entries;
    };
    const auto watching = std::make_shared<Watching>();
    const FakeClipboard::Guard guard(watching);
    std::string text;
    Zar::StringUtils::copyToClipboardT(text);
    EXPECT_EQ(watching->entries.back(), "Zar::StringUtils::copyToClipboardT");
    Zar::StringUtils::canCopyFromClipboardT<char>();
    EXPECT_EQ(watching->entries.back(), "Zar::StringUtils::canCopyFromClipboardT");
    Zar::StringUtils::copyFromClipboardT(text);
    EXPECT_EQ(watching->entries.back(), "Zar::StringUtils::copyFromClipboardT");
    EXPECT_TRUE(Zar::StackTracker::entries().empty());
}

} // namespace
