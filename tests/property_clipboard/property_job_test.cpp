#include "property_clipboard_fixture.h"

#include <host/core/stack_tracker.h>

#include <stdexcept>

namespace {

using namespace test;
using namespace std::chrono_literals;
using testing::ElementsAre;

/// Three selected bags, and a document that changes them.
class PropertyJobs : public PropertyClipboardTest
{
protected:
    PropertyJobs()
    {
        bags = {addBag("x", "ab"), addBag("y", "ab"), addBag("z", "ab")};
        for (int i = 0; i < 3; ++i)
            bags[std::size_t(i)]->value(0) = lumo::Variant(i + 1);
        select(bags);
        document = copied();
        for (const auto& bag : bags)
            bag->value(0) = lumo::Variant(0);
        messages.take();
    }
    std::string values() const { return bags[0]->text() + bags[1]->text() + bags[2]->text(); }

    std::vector<std::shared_ptr<PropertyBag>> bags;
    std::string document;
};

TEST_F(PropertyJobs, pasteInSlicesIsTheSamePaste)
{
    EXPECT_TRUE(browser.pasteProperties());
    const std::string expected = values();
    Lines expectedMessages = messages.take();
    expectedMessages.pop_back();
    changes->stack().undo();

    const int steps = changes->stack().index();
    const auto job = browser.startPaste();
    ASSERT_TRUE(job);
    EXPECT_THAT(selected(), ElementsAre("x", "y", "z")) << "nothing before the first slice";
    while (job->objectsDone() == 0)
        ASSERT_TRUE(job->advance(0ns));
    EXPECT_THAT(selected(), ElementsAre());
    EXPECT_EQ(job->objectsDone(), 1u);
    EXPECT_EQ(job->objectCount(), 3u);
    EXPECT_EQ(bags[0]->text() + bags[1]->text(), "a=1\nb=0\na=0\nb=0\n");
    EXPECT_TRUE(Zar::StackTracker::entries().empty());
    EXPECT_TRUE(job->advance(0ns));
    EXPECT_FALSE(job->hasSucceeded());
    EXPECT_EQ(changes->stack().index(), steps);
    EXPECT_FALSE(job->advance(0ns));

    EXPECT_TRUE(job->hasSucceeded());
    EXPECT_EQ(job->report().changedProperties, 3u);
    EXPECT_EQ(values(), expected);
    EXPECT_THAT(selected(), ElementsAre("x", "y", "z"));
    Lines lines = messages.take();
    lines.pop_back();
    EXPECT_EQ(lines, expectedMessages);
    EXPECT_EQ(changes->stack().index(), steps + 1);
    EXPECT_FALSE(job->advance(1h));
    changes->stack().undo();
    EXPECT_EQ(values(), "a=0\nb=0\na=0\nb=0\na=0\nb=0\n");
}

/// Under the editor's changes controller, and under an undo that the browser does not know.
class UnfinishedPaste : public PropertyJobs, public testing::WithParamInterface<bool>
{
protected:
    UnfinishedPaste()
    {
        if (!GetParam()) {
            for (const auto& bag : bags)
                bag->changes.reset();
        }
        for (const int i : {2, 0, 1})
            before.emplace_back(kyr::ReflectedObject(bags[std::size_t(i)]));
        chosen.setSelection(before, false);
    }
    void expectNothing()
    {
        EXPECT_EQ(values(), "a=0\nb=0\na=0\nb=0\na=0\nb=0\n");
        EXPECT_TRUE(chosen.objects() == before);
        EXPECT_FALSE(changes->isScopeOpen());
        EXPECT_EQ(changes->stack().count(), steps) << "what was undone can still be redone";
    }

    RecordedAssetSelection unrecorded;
    RecordedAssetSelection& chosen = GetParam() ? selection : unrecorded;
    SceneBrowserData pasting{&assetModel, &chosen, nullptr};
    IAssetSelection::Objects before;
    int steps = 0;
};

TEST_P(UnfinishedPaste, leavesNothing)
{
    EXPECT_TRUE(pasting.pasteProperties());
    if (GetParam()) {
        changes->stack().undo();
    } else {
        for (const auto& bag : bags)
            bag->value(0) = lumo::Variant(0);
        chosen.setSelection(before, false);
    }
    steps = changes->stack().count();
    for (const int slices : {0, 1, 2, 3, 4}) {
        auto job = pasting.startPaste();
        for (int i = 0; i < slices; ++i)
            EXPECT_TRUE(job->advance(0ns));
        job.reset();
        expectNothing();
    }
    for (const auto& bag : bags) {
        bag->changed = [] { throw std::runtime_error("listener"); };
        EXPECT_THROW(pasting.pasteProperties(), std::runtime_error);
        expectNothing();
        bag->changed = {};
    }
    for (const std::size_t selectedThen : {0u, 3u}) {
        const vex::Connection throwing = chosen.connectSelectionChanged(
            [selectedThen](const vex::Connection&, const IAssetSelection::SelectionChange& change) {
                if (change.after.size() == selectedThen)
                    throw std::runtime_error("listener");
            });
        EXPECT_THROW(pasting.pasteProperties(), std::runtime_error);
        expectNothing();
    }
    EXPECT_TRUE(pasting.pasteProperties());
    EXPECT_EQ(bags[2]->text(), "a=3\nb=0\n");
}

INSTANTIATE_TEST_SUITE_P(ByController, UnfinishedPaste, testing::Bool());

TEST_F(PropertyJobs, takeAChoiceOfPathsAndCountByPath)
{
    const auto chooseB = [](const std::string& path) { return path == "b"; };
    bags[0]->value(1) = lumo::Variant(7);
    auto job = browser.startCopy(chooseB);
    job->advance(1h);
    EXPECT_EQ(clipboard->text->find("<name>a"), std::string::npos);
    for (const auto& bag : bags)
        bag->value(1) = lumo::Variant(5);

    addBag("odd");
    select({bags[0], bags[1], bags[2], addBag("only a")});
    const std::string untouched = values();
    job = browser.startPastePreview();
    job->advance(1h);
    EXPECT_TRUE(job->hasSucceeded());
    EXPECT_EQ(values(), untouched);
    EXPECT_THAT(selected(), ElementsAre("x", "y", "z", "only a"));
    EXPECT_THAT(messages.take(), ElementsAre());
    const PropertyPasteCounts counts = job->report().properties.at("b");
    EXPECT_EQ(counts.changed, 3u);
    EXPECT_EQ(counts.unmatched, 1u);

    clipboard->text = document;
    job = browser.startPaste(chooseB);
    job->advance(1h);
    EXPECT_EQ(values(), "a=0\nb=0\na=0\nb=0\na=0\nb=0\n");
    EXPECT_EQ(job->report().properties.count("a"), 0u);
    EXPECT_EQ(job->report().unmatched, 1u);
}

TEST_F(PropertyJobs, jobsOutliveTheirBrowser)
{
    auto other = std::make_unique<SceneBrowserData>(&assetModel, &selection, nullptr);
    select(bags);
    const auto paste = other->startPaste();
    EXPECT_TRUE(paste->advance(0ns));
    other.reset();
    EXPECT_FALSE(paste->advance(1h));
    EXPECT_TRUE(paste->hasSucceeded());
    EXPECT_EQ(values(), "a=1\nb=0\na=2\nb=0\na=3\nb=0\n");
}

TEST_F(PropertyJobs, copyReachesTheClipboardInTheEnd)
{
    clipboard->text = "before";
    auto job = browser.startCopy();
    EXPECT_TRUE(job->advance(0ns));
    job.reset();
    EXPECT_EQ(clipboard->text, "before");

    bags[2]->value(0) = lumo::Variant(3);
    bags[1]->value(0) = lumo::Variant(2);
    bags[0]->value(0) = lumo::Variant(1);
    job = browser.startCopy();
    while (job->advance(0ns))
        EXPECT_EQ(clipboard->text, "before");
    EXPECT_TRUE(job->hasSucceeded());
    EXPECT_EQ(clipboard->text, document);
}

} // namespace
