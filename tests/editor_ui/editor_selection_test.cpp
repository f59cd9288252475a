#include "editor_test.h"

#include <kyr_scene_outline/item_roles.h>

#include <QMenu>
#include <QScreen>

namespace test {

using EditorSelectionTest = EditorTest;

TEST_F(EditorSelectionTest, clicksOnEitherSideSelectOnBothInTheirOrder)
{
    click(rowPoint("Far"));
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Far"}));
    EXPECT_EQ(text("selection_text"), "1 object selected");
    click(rowPoint("Near"), Qt::ControlModifier);
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Far", "Near"}));
    EXPECT_EQ(text("selection_text"), "2 objects selected");
    EXPECT_EQ(text("primary_text"), "Near");

    click(viewPoint("Far"));
    EXPECT_EQ(selectedRows(), QStringList({"Far"}));
    click(viewPoint("Near"), Qt::ControlModifier);
    EXPECT_EQ(selection(), QStringList({"Far", "Near"}));
    click(viewPoint("Far"), Qt::ControlModifier);
    EXPECT_EQ(selection(), QStringList({"Near"}));
    click(viewPoint("Far"), Qt::ShiftModifier);
    EXPECT_EQ(selection(), QStringList({"Near", "Far"}));

    const QPoint corner = item("viewport")->mapToScene({5, 5}).toPoint();
    click(corner, Qt::ControlModifier);
    EXPECT_EQ(selection(), QStringList({"Near", "Far"})) << "a missed Ctrl+click keeps all";
    click(corner);
    EXPECT_EQ(selectedRows(), QStringList());
    drag(viewPoint("Near") - QPoint(60, 60), viewPoint("Near") + QPoint(2, 2));
    EXPECT_EQ(selectedRows(), QStringList({"Near"}));

    openRow("Stage");
    ASSERT_TRUE(waitForRows({"Stage"}));
    click(viewPoint("Near"));
    EXPECT_TRUE(waitForRows({"Stage", "Lamps", "Near", "Far"})) << "revealed";
    EXPECT_EQ(selectedRows(), QStringList({"Near"}));

    set("Far", "locked", "true");
    click(viewPoint("Far"));
    EXPECT_EQ(selection(), QStringList()) << "locked objects are not picked";
}

TEST_F(EditorSelectionTest, hoverShowsOnTheOtherSide)
{
    moveTo(rowPoint("Near"));
    EXPECT_EQ(session.viewport()->hoveredIds(), ids({"Near"}));

    const auto isHovered = [this](const char* name) {
        return row(name).data(kyr::HoverRole).toBool();
    };
    moveTo(viewPoint("Far"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return isHovered("Far"); }));
    EXPECT_FALSE(isHovered("Near"));
    moveTo(item("viewport")->mapToScene({5, 5}).toPoint());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isHovered("Far"); }));
}

TEST_F(EditorSelectionTest, commandsSelectAcrossTheWholeTree)
{
    click(rowPoint("Near"));
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), QStringList({"Far", "Lamps", "Left", "Near", "Right", "Stage"}));
    EXPECT_EQ(session.viewport()->selectedIds().size(), 6u);

    click(rowPoint("Lamps"));
    key(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(selectedRows(), QStringList({"Left", "Right"}));
    key(Qt::Key_I, Qt::ControlModifier);
    EXPECT_EQ(selection(), QStringList({"Stage", "Lamps", "Near", "Far"}));
    key(Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(selection().size(), 4) << "the scene, a group and the meshes";
    select({"Left", "Right"});
    key(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(selection(), QStringList({"Lamps"}));
}

TEST_F(EditorSelectionTest, undoBringsBackSelectionsAndObjectsOnBothSides)
{
    click(rowPoint("Far"), {}, Qt::RightButton);
    EXPECT_EQ(selection(), QStringList({"Far"}));
    EXPECT_FALSE(rows().contains("Left"));
    EXPECT_TRUE(chooseInMenu("Expand All"));
    EXPECT_TRUE(rows().contains("Left"));

    click(rowPoint("Near"));
    click(viewPoint("Far"));
    EXPECT_EQ(undoName(), "Set asset selection");
    undo();
    EXPECT_EQ(selectedRows(), QStringList({"Near"}));
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Near"}));
    redo();
    EXPECT_EQ(selectedRows(), QStringList({"Far"}));
    EXPECT_FALSE(session.document()->isModified());

    click(rowPoint("Left"), Qt::ControlModifier);
    int before = steps();
    key(Qt::Key_Delete);
    EXPECT_EQ(object("Far"), nullptr);
    EXPECT_EQ(object("Left"), nullptr);
    EXPECT_EQ(session.viewport()->itemCount(), 4);
    EXPECT_EQ(selection(), QStringList());
    EXPECT_EQ(steps(), before + 1);
    key(Qt::Key_Delete);
    key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(steps(), before + 1) << "nothing is selected";
    undo();
    EXPECT_EQ(rows(), QStringList({"Stage", "Lamps", "Left", "Right", "Near", "Far"}));
    EXPECT_EQ(selectedRows(), QStringList({"Far", "Left"}));
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Far", "Left"}));

    before = steps();
    click(rowPoint("Lamps"));
    key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(session.document()->objectCount(), 8);
    ASSERT_EQ(selection().size(), 1);
    EXPECT_NE(session.selection().objects().front().object(), object("Lamps")->reflected());
    undo();
    EXPECT_EQ(session.document()->objectCount(), 5);
    EXPECT_EQ(selection(), QStringList({"Lamps"}));
    EXPECT_EQ(steps(), before + 1) << "the click";
}

// A simulated Delete has no text, that of a display has one.
TEST_F(EditorSelectionTest, treeLeavesKeysThatAreNoLettersToTheEditor)
{
    click(rowPoint("Far"));
    display.press("Delete");
    EXPECT_TRUE(QTest::qWaitFor([this] { return object("Far") == nullptr; }));
    display.press("Up");
    display.press("n");
    EXPECT_TRUE(QTest::qWaitFor([this] { return selection() == QStringList({"Near"}); }))
        << "letters search";
}

TEST_F(EditorSelectionTest, menuKeyOpensAtTheCurrentRow)
{
    moveTo({600, 300});
    click(rowPoint("Near"));
    display.press("Menu");
    QMenu* menu = openedMenu();
    QQuickItem* row = rowItem("Near");
    const int below = int(row->mapToGlobal({0, row->height()}).y());
    const int lowest = window->screen()->geometry().bottom() + 1 - menu->height();
    EXPECT_EQ(menu->pos().y(), std::min(below, lowest)) << "as far as it fits on the screen";
    menu->close();
    moveTo({600, 300});
    click(rowPoint("Far"), {}, Qt::RightButton);
    openedMenu()->close();
}

} // namespace test
