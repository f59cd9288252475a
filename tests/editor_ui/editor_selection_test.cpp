#include "editor_test.h"

#include <kyr_scene_outline/item_roles.h>

#include <QApplication>
#include <QMenu>

namespace test {

using EditorSelectionTest = EditorTest;

TEST_F(EditorSelectionTest, clickedRowsAreSelectedInTheViewInTheirOrder)
{
    click(rowPoint("Far"));
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Far"}));
    EXPECT_EQ(item("selection_text")->property("text"), "1 object selected");

    click(rowPoint("Near"), Qt::ControlModifier);
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Far", "Near"}));
    EXPECT_EQ(item("selection_text")->property("text"), "2 objects selected");
    EXPECT_EQ(item("primary_text")->property("text"), "Near");
}

TEST_F(EditorSelectionTest, picksInTheViewSelectRows)
{
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
}

TEST_F(EditorSelectionTest, rubberBandSelectsRows)
{
    drag(viewPoint("Near") - QPoint(60, 60), viewPoint("Near") + QPoint(2, 2));
    EXPECT_EQ(selectedRows(), QStringList({"Near"}));
}

TEST_F(EditorSelectionTest, lockedObjectsAreNotPicked)
{
    session.document()->setProperty({object("Far")}, "locked", lumo::Variant(true));
    click(viewPoint("Far"));
    EXPECT_EQ(selection(), QStringList());
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
}

TEST_F(EditorSelectionTest, undoBringsBackASelectionOnBothSides)
{
    click(rowPoint("Near"));
    click(viewPoint("Far"));
    EXPECT_EQ(session.undoStatus()->undoName(), "Set asset selection");

    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), QStringList({"Near"}));
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Near"}));
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(selectedRows(), QStringList({"Far"}));
    EXPECT_FALSE(session.document()->isModified());
}

TEST_F(EditorSelectionTest, contextMenuSelectsItsRowAndExpandsAll)
{
    click(rowPoint("Far"), {}, Qt::RightButton);
    EXPECT_EQ(selection(), QStringList({"Far"}));
    QMenu* menu = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&menu] {
        menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu != nullptr;
    }));
    auto* expand = menu->findChild<QAction*>("scene_browser_expand_all");
    ASSERT_NE(expand, nullptr);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(expand).center());
    EXPECT_TRUE(rows().contains("Left"));
}

// A simulated Delete has no text, that of a display has one.
TEST_F(EditorSelectionTest, treeLeavesKeysThatAreNoLettersToTheEditor)
{
    click(rowPoint("Far"));
    displayKey("Delete");
    EXPECT_TRUE(QTest::qWaitFor([this] { return object("Far") == nullptr; }));
    displayKey("Up");
    displayKey("n");
    EXPECT_TRUE(QTest::qWaitFor([this] { return selection() == QStringList({"Near"}); }))
        << "letters search";
}

TEST_F(EditorSelectionTest, menuKeyOpensAtTheCurrentRow)
{
    moveTo({600, 300});
    click(rowPoint("Near"));
    displayKey("Menu");
    QMenu* menu = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&menu] {
        menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu != nullptr;
    }));
    QQuickItem* row = rowItem("Near");
    EXPECT_EQ(menu->pos().y(), int(row->mapToGlobal({0, row->height()}).y()));
    menu->close();
    moveTo({600, 300});
    click(rowPoint("Far"), {}, Qt::RightButton);
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    QApplication::activePopupWidget()->close();
}

TEST_F(EditorSelectionTest, deletedObjectsLeaveBothSidesAndComeBackSelected)
{
    click(viewPoint("Far"));
    key(Qt::Key_Delete);
    EXPECT_EQ(object("Far"), nullptr);
    EXPECT_EQ(session.viewport()->itemCount(), 5);
    EXPECT_EQ(selection(), QStringList());

    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), QStringList({"Far"}));
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Far"}));
}

} // namespace test
