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

} // namespace test
