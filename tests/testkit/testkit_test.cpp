#include <host/scene/recorded_asset_selection.h>
#include <kyr_scene_outline_testkit/contract.h>
#include <kyr_scene_outline_testkit/random_driver.h>
#include <support/driver_steps.h>
#include <support/tree_model.h>

#include <QUndoStack>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace kyr::testkit;

template <typename Selection>
class TreeScene : public SceneUnderTest
{
public:
    IAssetModel& assetModel() override { return m_assetModel; }
    IAssetSelection& assetSelection() override { return m_selection; }
    bool insertRow(const QModelIndex& parent, int row) override
    {
        m_model.insert(parent, row, test::TreeModel::named({QString::number(m_made++)}));
        return true;
    }
    bool removeRows(const QModelIndex& parent, int row, int count) override
    {
        m_model.remove(parent, row, count);
        return true;
    }
    bool moveRow(const QModelIndex& from, int row, const QModelIndex& to, int toRow) override
    {
        return m_model.move(from, row, 1, to, toRow);
    }
    bool relayout() override
    {
        m_model.reverse({}, QAbstractItemModel::NoLayoutChangeHint);
        return true;
    }
    bool reset() override
    {
        m_model.resetTo("a\n  b\n  c\nd\n  e\n    f\ng");
        return true;
    }
    bool undo() override
    {
        m_changes->stack().undo();
        return true;
    }
    bool redo() override
    {
        m_changes->stack().redo();
        return true;
    }

private:
    // The rows are those of the first column.
    test::TreeModel m_model{"a\n  b\n    c\n  d\ne\n  f\ng\nh", 2};
    test::TreeAssetModel m_assetModel{&m_model};
    std::shared_ptr<Zar::ChangesController> m_changes = std::make_shared<Zar::ChangesController>();
    Selection m_selection{m_changes};
    int m_made = 0;
};

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
