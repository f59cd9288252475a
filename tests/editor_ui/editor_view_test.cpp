#include "editor_test.h"

#include <QSignalSpy>

namespace test {

using EditorViewTest = EditorTest;

TEST_F(EditorViewTest, aSceneIsBuiltOnceAndAGroupIsMarkedAsOne)
{
    QSignalSpy built(session.viewport(), &editor::ViewportController::itemsReset);
    session.document()->open(object("Stage")->clone(), {});
    EXPECT_EQ(built.count(), 1);
    EXPECT_EQ(session.viewport()->itemCount(), 6);

    ASSERT_TRUE(waitForRows({"Stage", "Lamps", "Near", "Far"}));
    click(rowPoint("Lamps"));
    moveTo(rowPoint("Stage"));
    EXPECT_EQ(session.viewport()->selectedIds(), ids({"Lamps"}));
    EXPECT_EQ(session.viewport()->hoveredIds(), ids({"Stage"}));
    EXPECT_EQ(session.viewport()->items().branchOf(ids({"Stage"})[0]).size(), 6u);
}

TEST_F(EditorViewTest, theTabKeyComesToTheViewAndGoesOn)
{
    QQuickItem* view = item("viewport");
    click(rowPoint("Near"));
    for (int steps = 0; steps < 40 && !view->hasActiveFocus(); ++steps)
        key(Qt::Key_Tab);
    ASSERT_TRUE(view->hasActiveFocus());
    key(Qt::Key_R);
    EXPECT_EQ(session.viewport()->gizmo()->tool(), editor::Gizmo::Tool::Scale);
    const float distance = session.viewport()->camera().distance();
    key(Qt::Key_Plus);
    EXPECT_LT(session.viewport()->camera().distance(), distance);
    key(Qt::Key_Tab);
    EXPECT_FALSE(view->hasActiveFocus());
}

} // namespace test
