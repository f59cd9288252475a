// Dragging rows in the panel's window.

#include "scene_panel_fixture.h"

#include <QSignalSpy>

namespace {

using PanelDraggingTest = ScenePanelTest;

TEST_F(PanelDraggingTest, dragsRowsOntoAndBetweenOthers)
{
    open(house());
    QSignalSpy ends(window.panel(), SIGNAL(editEnds()));
    selectRow("Tree", QItemSelectionModel::Select);
    window.drag(window.at(120, 3), window.at(120, 2));
    EXPECT_EQ(model->find("Tree").parent().data().toString(), "Roof");
    EXPECT_EQ(selectedRows(), "Tree");
    const QPoint aboveWall = window.at(120, 1) - QPoint(0, PanelWindow::rowHeight / 2 - 2);
    window.drag(window.at(120, 2), aboveWall);
    EXPECT_EQ(window.rows(), "House Roof Wall");
    const QPoint belowHouse = window.at(120, 0) + QPoint(0, PanelWindow::rowHeight / 2 - 2);
    window.drag(window.at(120, 2), belowHouse);
    EXPECT_EQ(window.rows(), "House Wall Roof") << "to the first place below an open row";
    window.drag(window.at(120, 2), belowHouse);
    ends.clear();
    window.drag(window.at(120, 0), window.at(120, 1));
    EXPECT_EQ(ends.size(), 0) << "not into itself";
    EXPECT_EQ(window.rows(), "House Roof Wall");
}

TEST_F(PanelDraggingTest, aDragInASortedTreeDropsOntoRowsOnly)
{
    open(house());
    window.click(QPoint(40, 10));
    EXPECT_EQ(window.rows(), "House Roof Wall Tree");
    const QPoint aboveRoof = window.at(120, 1) - QPoint(0, PanelWindow::rowHeight / 2 - 2);
    window.drag(window.at(120, 3), aboveRoof);
    EXPECT_EQ(model->find("Tree").parent().data().toString(), "Roof");
}

TEST_F(PanelDraggingTest, severalRowsKeepTheirOrderSelectionAndExpansion)
{
    open(TreeModel::parsed("+A\n  A1\nB\n+C\n  C1\nD\n"));
    ASSERT_EQ(window.rows(), "A A1 B C C1 D");
    window.click(window.at(120, 3));
    window.click(window.at(120, 0), Qt::ControlModifier);
    const QPoint belowD = window.at(120, 5) + QPoint(0, PanelWindow::rowHeight / 2 - 2);
    window.drag(window.at(120, 3), belowD);
    EXPECT_EQ(window.rows(), "B D A A1 C C1");
    EXPECT_EQ(selectedRows(), "C A");
}

TEST_F(PanelDraggingTest, aClosedRowOpensUnderARestingDrag)
{
    open(house());
    window.pull(window.at(120, 3), window.at(120, 2));
    EXPECT_EQ(window.rows(), "House Wall Roof Tree");
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.rows() == "House Wall Roof Tile Tree"; }));
    window.release(window.at(120, 3));
    EXPECT_EQ(model->find("Tree").parent().data().toString(), "Tile");
}

TEST_F(PanelDraggingTest, edgesScrollUnderADragUntilTheEnd)
{
    open(TreeModel::wide(60, 0));
    const int end = (60 - PanelWindow::visibleRows) * PanelWindow::rowHeight;
    const QPoint lower = window.at(120, PanelWindow::visibleRows - 1);
    window.pull(window.at(120, 2), lower);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.scrolled() == end; })) << window.scrolled();
    window.movePointer(window.at(120, 0));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.scrolled() == 0; })) << window.scrolled();
    window.press(Qt::Key_Escape);
    window.movePointer(window.at(120, 4));
    window.movePointer(window.at(120, 0));
    window.release(window.at(120, 0));
    EXPECT_EQ(model->rowCount(), 60) << "Escape drops nothing";
}

} // namespace
