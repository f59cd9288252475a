#include "editor_test.h"

#include <QAbstractItemModelTester>

namespace test {

class EditorInspectorTest : public EditorTest
{
protected:
    QVariant shown(const char* path, int role)
    {
        const editor::InspectorModel& model = *session.inspector();
        const QModelIndexList found = model.match(model.index(0), editor::InspectorModel::PathRole,
                                                  path, 1, Qt::MatchExactly);
        return found.value(0).data(role);
    }

    QQuickItem* line(const char* path) { return item(QString("property_%1").arg(path)); }

    QPoint fieldPoint(const char* path, double part = 0.5)
    {
        QQuickItem* whole = line(path);
        const double left = 100;
        return whole->mapToScene({left + (whole->width() - left) * part, whole->height() / 2})
            .toPoint();
    }

    void enter(const QPoint& field, const QString& text)
    {
        click(field);
        key(Qt::Key_A, Qt::ControlModifier);
        type(text);
        key(Qt::Key_Return);
    }

    float intensity(const char* name) { return object(name)->light()->intensity; }
    float x(const char* name) { return object(name)->transform()->position.x; }
    float y(const char* name) { return object(name)->transform()->position.y; }

    QAbstractItemModelTester tester{session.inspector(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(EditorInspectorTest, typedNumberGoesToAllSelectedObjectsInOneStep)
{
    select({"Left", "Right"});
    EXPECT_TRUE(shown("light.intensity", editor::InspectorModel::MixedRole).toBool());
    const int steps = session.document()->undoStack().index();
    enter(fieldPoint("light.intensity"), "7.5");

    EXPECT_EQ(intensity("Left"), 7.5f);
    EXPECT_EQ(intensity("Right"), 7.5f);
    EXPECT_FALSE(shown("light.intensity", editor::InspectorModel::MixedRole).toBool());
    EXPECT_EQ(session.document()->undoStack().index(), steps + 1);

    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(intensity("Left"), 4);
    EXPECT_EQ(intensity("Right"), 5);
    EXPECT_TRUE(shown("light.intensity", editor::InspectorModel::MixedRole).toBool());
}

TEST_F(EditorInspectorTest, oneComponentLeavesTheOthersAlone)
{
    select({"Left", "Right"});
    const QVariantList position =
        shown("transform.position", editor::InspectorModel::ValueRole).toList();
    EXPECT_TRUE(position.value(0).isNull());
    EXPECT_EQ(position.value(1), 3.0);

    enter(fieldPoint("transform.position", 0.5), "8");
    EXPECT_EQ(x("Left"), -2);
    EXPECT_EQ(x("Right"), 2);
    EXPECT_EQ(y("Left"), 8);
    EXPECT_EQ(y("Right"), 8);
}

TEST_F(EditorInspectorTest, refusedInputShowsTheOldValue)
{
    select({"Left"});
    struct
    {
        const char* path;
        const char* typed;
    } const rows[] = {{"light.intensity", "bright"}, {"light.intensity", ""}};
    for (const auto& [path, typed] : rows) {
        enter(fieldPoint(path), typed);
        EXPECT_EQ(intensity("Left"), 4) << typed;
    }
    enter(fieldPoint("light.outerAngle"), "200");
    EXPECT_EQ(object("Left")->light()->outerAngle, 90) << "kept within the range";

    click(fieldPoint("light.intensity"));
    type("9");
    key(Qt::Key_Escape);
    EXPECT_EQ(intensity("Left"), 4);
}

TEST_F(EditorInspectorTest, draggedNumberIsOneStepAndMovesTheViewAlong)
{
    select({"Near"});
    const QPointF before = session.viewport()->projectToScreen(object("Near")->id());
    const int steps = session.document()->undoStack().index();
    const QPoint start = fieldPoint("transform.position", 0.1);
    drag(start, start + QPoint(60, 0));
    EXPECT_GT(x("Near"), -2);
    EXPECT_EQ(session.document()->undoStack().index(), steps + 1);
    EXPECT_NE(session.viewport()->projectToScreen(object("Near")->id()), before);

    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(x("Near"), -2);
    EXPECT_EQ(session.viewport()->projectToScreen(object("Near")->id()), before);
}

TEST_F(EditorInspectorTest, nameAndVisibilityFollowBothWays)
{
    select({"Near"});
    enter(fieldPoint("name"), "Crate");
    EXPECT_EQ(row("Crate").data().toString(), "Crate");
    EXPECT_EQ(item("primary_text")->property("text"), "Crate");

    click(fieldPoint("visible", 0.02));
    EXPECT_FALSE(object("Crate")->isVisible());
    EXPECT_FALSE(shown("visible", editor::InspectorModel::ValueRole).toBool());
    click(viewPoint("Crate"));
    EXPECT_EQ(selection(), QStringList()) << "hidden objects are not picked";
}

TEST_F(EditorInspectorTest, foldedGroupStaysFoldedForTheNextObject)
{
    select({"Left"});
    click(centre(line("transform")) - QPoint(60, 0));
    EXPECT_FALSE(shown("transform.scale", editor::InspectorModel::ShownRole).toBool());
    select({"Near"});
    EXPECT_FALSE(shown("transform.scale", editor::InspectorModel::ShownRole).toBool());
    EXPECT_TRUE(shown("material.metallic", editor::InspectorModel::ShownRole).toBool());
}

} // namespace test
