#include <kyr_scene_outline_testkit/contract.h>
#include <kyr_scene_outline_testkit/random_driver.h>
#include <support/driver_steps.h>
#include <support/tree_scene.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace kyr::testkit;
using test::TreeScene;

template <typename Selection>
SceneFactory scenes()
{
    return [] { return std::make_unique<TreeScene<Selection>>(); };
}

/// Forgets the last of more than two objects.
class ForgetfulSelection : public RecordedAssetSelection
{
public:
    using RecordedAssetSelection::RecordedAssetSelection;
    void setSelection(Objects objects, bool keepPresent) override
    {
        if (objects.size() > 2)
            objects.pop_back();
        RecordedAssetSelection::setSelection(std::move(objects), keepPresent);
    }
};

} // namespace

TEST(TestKit, theRecordedSelectionAndBothBrowsersAgreeInAHundredThousandSteps)
{
    EXPECT_EQ("", contractViolations(scenes<RecordedAssetSelection>()));
    EXPECT_EQ("", firstFailure(scenes<RecordedAssetSelection>(), 1, test::driverSteps(100000)));
}

TEST(TestKit, namesWhatAHostBreaksAndHowToSeeItInFewSteps)
{
    EXPECT_EQ(0u, contractViolations(scenes<ForgetfulSelection>())
                      .find("IAssetSelection/keepsWhatIsSetInOrder: objects() is "));
    const std::string failure = firstFailure(scenes<ForgetfulSelection>(), 1, 2000);
    EXPECT_EQ(0u, failure.find("seed 1, ")) << failure;
    EXPECT_LE(std::count(failure.begin(), failure.end(), '\n'), 3)
        << "two steps at most: " << failure;
    EXPECT_EQ(failure, firstFailure(scenes<ForgetfulSelection>(), 1, 2000));
}
