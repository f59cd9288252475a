#include "scene_samples.h"

#include <editor/document/scene_commands.h>
#include <host/scene/recorded_asset_selection.h>

#include <gtest/gtest.h>

namespace {

using namespace editor;
using namespace test;

struct SceneCommandsTest : testing::Test
{
    SceneCommandsTest() { document.open(sceneFrom("group A\n  mesh B\nmesh C"), {}); }

    void select(std::initializer_list<std::string> paths)
    {
        IAssetSelection::Objects objects;
        for (const SceneObjectPtr& object : at(document, paths))
            objects.emplace_back(object->reflected());
        selection.setSelection(objects, false);
        document.undoStack().clear();
    }

    std::string selected() const
    {
        std::string names;
        for (const SceneObjectPtr& object : selectedObjects(document, selection))
            names += object->name() + " ";
        return names;
    }

    SceneDocument document;
    RecordedAssetSelection selection{document.changesController()};
};

TEST_F(SceneCommandsTest, deletingAndItsUndoTakeTheSelectionAlong)
{
    select({"C", "A/B"});
    ASSERT_TRUE(removeSelected(document, selection));
    EXPECT_TRUE(selection.objects().empty());
    EXPECT_EQ(document.undoStack().count(), 1);
    document.undoStack().undo();
    EXPECT_EQ(selected(), "C B ");
    EXPECT_EQ(shapeOf(*document.root()), "group A\n  mesh B\nmesh C");
}

TEST_F(SceneCommandsTest, copiesAreSelectedUntilUndone)
{
    select({"A"});
    ASSERT_TRUE(duplicateSelected(document, selection));
    EXPECT_EQ(selected(), "A 2 ");
    EXPECT_EQ(document.undoStack().count(), 1);
    document.undoStack().undo();
    EXPECT_EQ(selected(), "A ");
}

TEST_F(SceneCommandsTest, nothingSelectedDoesNothing)
{
    select({});
    EXPECT_FALSE(removeSelected(document, selection));
    EXPECT_FALSE(duplicateSelected(document, selection));
    EXPECT_EQ(document.undoStack().count(), 0);
}

TEST_F(SceneCommandsTest, selectingIsNoModification)
{
    selection.setSelection({kyr::PersistentObject(at(document, "C")->reflected())}, false);
    EXPECT_EQ(document.undoStack().count(), 1);
    EXPECT_FALSE(document.isModified());
}

} // namespace
