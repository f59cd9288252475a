#include <host/scene/recorded_asset_selection.h>
#include <host/ui/widget_popup_menu.h>
#include <host/undo/commit_changes_scope.h>
#include <support/tree_model.h>

#include <QMenu>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>

namespace {

class AssetSelectionTest : public testing::Test
{
protected:
    IAssetSelection::Objects objects(const QStringList& names) const
    {
        IAssetSelection::Objects list;
        for (const QString& name : names)
            list.emplace_back(model.object(name));
        return list;
    }
    static std::string text(const IAssetSelection::Objects& list)
    {
        std::string names;
        for (const kyr::PersistentObject& object : list)
            names += object.object().reference().name();
        return names;
    }

    test::TreeModel model{"a\nb\nc"};
    std::shared_ptr<Zar::ChangesController> changes = std::make_shared<Zar::ChangesController>();
    RecordedAssetSelection selection{changes};
};

} // namespace

TEST_F(AssetSelectionTest, keepsOrderWithoutDuplicatesAndNotifiesRealChanges)
{
    std::string log;
    const auto connection = selection.connectSelectionChanged(
        [&](const vex::Connection& cause, const IAssetSelection::SelectionChange& change) {
            EXPECT_FALSE(cause.isConnected());
            log += text(change.before) + ">" + text(change.after) + " ";
        });
    selection.setSelection(objects({"c", "a", "c"}), false);
    selection.setSelection(objects({"c", "a"}), false);
    selection.setSelection(objects({"a", "b"}), true);
    selection.setSelection(objects({"a", "c", "b"}), false);
    selection.clearSelection();
    EXPECT_EQ(">ca ca>cab cab>acb acb> ", log);
    EXPECT_EQ(4, changes->stack().count());
    changes->stack().undo();
    changes->stack().undo();
    EXPECT_EQ("cab", text(selection.objects()));
    EXPECT_TRUE(selection.isSelected(model.object("b")));
    EXPECT_FALSE(selection.isSelected({}));
}

TEST_F(AssetSelectionTest, clearingAndSettingBackInOneScopeLeavesNoStep)
{
    selection.setSelection(objects({"a"}), false);
    {
        const Zar::CommitChangesScope scope("Paste", changes.get());
        selection.clearSelection();
        selection.setSelection(objects({"a"}), false);
    }
    EXPECT_EQ(1, changes->stack().count());
}

TEST_F(AssetSelectionTest, stepsOutliveTheSelectionTheyBelongTo)
{
    {
        RecordedAssetSelection closed(changes);
        closed.setSelection(objects({"a"}), false);
    }
    changes->stack().undo();
    changes->stack().redo();
    EXPECT_EQ(1, changes->stack().count());
}

TEST_F(AssetSelectionTest, aNewObjectAtADeadOnesAddressIsAnother)
{
    alignas(test::NamedObject) unsigned char place[sizeof(test::NamedObject)];
    // Lets go of its memory when the last handle goes, as an object not made with its count.
    const auto make = [&place] {
        return std::shared_ptr<kyr::IReflected>(
            new (place) test::NamedObject("x"),
            [](test::NamedObject* object) { object->~NamedObject(); });
    };
    auto object = make();
    selection.setSelection({kyr::PersistentObject(kyr::ReflectedObject(object))}, false);
    EXPECT_TRUE(selection.isSelected(kyr::ReflectedObject(object)));
    object.reset();
    object = make();
    EXPECT_FALSE(selection.isSelected(kyr::ReflectedObject(object)));
    selection.setSelection({kyr::PersistentObject(kyr::ReflectedObject(object))}, true);
    EXPECT_EQ(2u, selection.objects().size());
}

TEST_F(AssetSelectionTest, hoverChangesAreToldOnceAndInOrder)
{
    std::string log;
    const auto connection = selection.connectHoverChanged(
        [&](const IAssetSelection::Objects& entered, const IAssetSelection::Objects& left) {
            log += "+" + text(entered) + "-" + text(left) + " ";
        });
    selection.setHoveredObjects(objects({"b", "a"}));
    selection.setHoveredObjects(objects({"a", "b"}));
    selection.setHoveredObjects(objects({"c", "b"}));
    EXPECT_EQ("+ba- +c-a ", log);

    // Compared all with all, so many do not come to an end.
    const auto scene = std::make_shared<test::NamedObject>("scene");
    std::deque<test::NamedObject> crowd;
    IAssetSelection::Objects all;
    while (all.size() < 1000000)
        all.emplace_back(kyr::ReflectedObject(scene, &crowd.emplace_back("")));
    selection.setHoveredObjects(all);
    log.clear();
    std::reverse(all.begin(), all.end());
    selection.setHoveredObjects(all);
    EXPECT_EQ("", log);
}

TEST(WidgetPopupMenu, entriesOfAnActionThatIsGoneDoNothing)
{
    int triggered = 0;
    const auto info = lumo::ActionInfo::create("id", "Text", "", "", "", "", {});
    auto action = std::make_unique<lumo::Action>(
        info, [&] { ++triggered; }, nullptr, nullptr, nullptr);
    QMenu* shown = nullptr;
    lumo::WidgetPopupMenuProvider provider([&shown](QMenu& menu) { shown = &menu; });
    provider.popupMenu()->addAction(action.get(), "");
    shown->actions().first()->trigger();
    action.reset();
    shown->actions().first()->trigger();
    EXPECT_EQ(1, triggered);
}
