#include "editor_test.h"

#include <QSignalSpy>

namespace test {

using EditorViewTest = EditorTest;

TEST_F(EditorViewTest, aSceneIsBuiltOnceAndAGroupIsMarkedAsOne)
{
    QSignalSpy built(session.viewport(), &editor::ViewportController::itemsReset);
    session.document()->open(editor::SceneObject::cloneAll({object("Stage")}).front(), {});
    EXPECT_EQ(built.count(), 1);
    EXPECT_EQ(session.viewport()->itemCount(), 6);
    click(rowPoint("Far"));
    key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(session.viewport()->itemCount(), 7);
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Far 2"}));
    session.document()->reparent({object("Far"), object("Left")}, *object("Near"));
    EXPECT_EQ(
        session.viewport()->items().countIn(session.viewport()->items().branchOf(ids({"Near"})[0])),
        3u);
    undo();
    undo();
    EXPECT_EQ(session.viewport()->itemCount(), 6);
    EXPECT_EQ(built.count(), 1) << "only what changed";

    ASSERT_TRUE(waitForRows({"Stage", "Lamps", "Near", "Far"}));
    click(rowPoint("Lamps"));
    moveTo(rowPoint("Stage"));
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Lamps"}));
    EXPECT_EQ(session.viewport()->hoveredIds(), ids({"Stage"}));
    const editor::ItemSet& items = session.viewport()->items();
    EXPECT_EQ(items.countIn(items.branchOf(ids({"Stage"})[0])), 6u);
}

TEST_F(EditorViewTest, theTabKeyComesToTheViewAndGoesOn)
{
    QQuickItem* view = item("viewport");
    click(item("axis_gizmo")->mapToScene({38, 12}).toPoint());
    EXPECT_FLOAT_EQ(session.viewport()->camera().pitch(), 90) << "onto the end of y";
    click(rowPoint("Near"));
    for (int steps = 0; steps < 40 && !view->hasActiveFocus(); ++steps)
        key(Qt::Key_Tab);
    ASSERT_TRUE(view->hasActiveFocus());
    key(Qt::Key_R);
    EXPECT_EQ(session.viewport()->gizmo()->tool(), editor::Gizmo::Tool::Scale);
    const float distance = session.viewport()->camera().distance();
    key(Qt::Key_Plus);
    EXPECT_LT(session.viewport()->camera().distance(), distance);
    set("Near", "transform.position", "1e30 0 0");
    key(Qt::Key_F);
    EXPECT_EQ(message(), "An object lies or reaches too far out to be framed");
    key(Qt::Key_Tab);
    EXPECT_FALSE(view->hasActiveFocus());
}

} // namespace test
