#include "editor_test.h"

#include <QAbstractItemModelTester>

namespace test {

using editor::InspectorModel;

class EditorInspectorTest : public EditorTest
{
protected:
    QVariant shown(const char* path, int role)
    {
        const InspectorModel& model = *session.inspector();
        const QModelIndexList found =
            model.match(model.index(0), InspectorModel::PathRole, path, 1, Qt::MatchExactly);
        return found.value(0).data(role);
    }

    QQuickItem* line(const char* path) { return item(QString("property_%1").arg(path)); }

    QPoint fieldPoint(const char* path, double part = 0.5)
    {
        QQuickItem* whole = line(path);
        const double left = 100;
        // Of a vector that stands below its label, the lower half.
        const bool stacked = whole->property("stacked").toBool();
        return whole
            ->mapToScene({stacked ? whole->width() * part : left + (whole->width() - left) * part,
                          whole->height() * (stacked ? 0.7 : 0.5)})
            .toPoint();
    }

    void enter(const QPoint& field, const QString& text)
    {
        click(field);
        key(Qt::Key_A, Qt::ControlModifier);
        type(text);
        key(Qt::Key_Return);
    }

    QString intensities()
    {
        return QStringLiteral("%1 %2")
            .arg(object("Left")->light()->intensity)
            .arg(object("Right")->light()->intensity);
    }
    float x(const char* name) { return object(name)->transform()->position.x; }
    float y(const char* name) { return object(name)->transform()->position.y; }

    QAbstractItemModelTester tester{session.inspector(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(EditorInspectorTest, typedNumberGoesToAllSelectedObjectsInOneStep)
{
    select({"Left", "Right"});
    EXPECT_TRUE(shown("light.intensity", InspectorModel::MixedRole).toBool());
    const int before = steps();
    enter(fieldPoint("light.intensity"), "7.5");

    EXPECT_EQ(intensities(), "7.5 7.5");
    EXPECT_FALSE(shown("light.intensity", InspectorModel::MixedRole).toBool());
    EXPECT_EQ(steps(), before + 1);

    undo();
    EXPECT_EQ(intensities(), "4 5");
    EXPECT_TRUE(shown("light.intensity", InspectorModel::MixedRole).toBool());

    // One component leaves the others alone.
    const QVariantList position = shown("transform.position", InspectorModel::ValueRole).toList();
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
    for (const char* typed : {"bright", ""}) {
        enter(fieldPoint("light.intensity"), typed);
        EXPECT_EQ(intensities(), "4 5") << typed;
    }
    EXPECT_EQ(text("message_text"), "“bright” is no number");
    enter(fieldPoint("light.outerAngle"), "200");
    EXPECT_EQ(object("Left")->light()->outerAngle, 90) << "kept within the range";
    EXPECT_EQ(text("message_text"), "Outer angle is kept between 0 and 90");

    enter(fieldPoint("name"), " ");
    EXPECT_EQ(text("message_text"), "Name cannot be “ ”");
    EXPECT_NE(object("Left"), nullptr);

    click(fieldPoint("light.intensity"));
    type("9");
    key(Qt::Key_Escape);
    EXPECT_EQ(intensities(), "4 5");
}

TEST_F(EditorInspectorTest, arithmeticAndScrubbingAreRelativeToEachObject)
{
    select({"Left", "Right"});
    const std::pair<const char*, const char*> rows[] = {
        {"*2", "8 10"}, {"+=1.5", "9.5 11.5"}, {"-=0,5", "9 11"}, {"/2", "4.5 5.5"}};
    for (const auto& [typed, both] : rows) {
        enter(fieldPoint("light.intensity"), typed);
        EXPECT_EQ(intensities(), both) << typed;
    }
    const QPoint start = fieldPoint("light.intensity");
    drag(start, start + QPoint(30, 0));
    EXPECT_EQ(intensities(), "5.5 6.5");
    undo();
    EXPECT_EQ(intensities(), "4.5 5.5") << "the drag was one step";
    click(fieldPoint("transform.position", 0.1));
    key(Qt::Key_Up);
    key(Qt::Key_Escape);
    EXPECT_EQ(x("Right") - x("Left"), 4);
}

TEST_F(EditorInspectorTest, draggedNumberNameAndVisibilityShowEverywhere)
{
    select({"Near"});
    const QPointF before = session.viewport()->projectToScreen(object("Near")->id());
    const int stepsBefore = steps();
    const QPoint start = fieldPoint("transform.position", 0.1);
    drag(start, start + QPoint(60, 0));
    EXPECT_GT(x("Near"), -2);
    EXPECT_EQ(steps(), stepsBefore + 1);
    EXPECT_NE(session.viewport()->projectToScreen(object("Near")->id()), before);

    undo();
    EXPECT_EQ(x("Near"), -2);
    EXPECT_EQ(session.viewport()->projectToScreen(object("Near")->id()), before);

    enter(fieldPoint("name"), "Crate");
    EXPECT_EQ(row("Crate").data().toString(), "Crate");
    EXPECT_EQ(session.undoStatus()->undoName(), "Rename Near");
    EXPECT_EQ(text("primary_text"), "Crate");

    click(fieldPoint("visible", 0.02));
    EXPECT_FALSE(object("Crate")->isVisible());
    EXPECT_FALSE(shown("visible", InspectorModel::ValueRole).toBool());
    click(viewPoint("Crate"));
    EXPECT_EQ(selection(), QStringList()) << "hidden objects are not picked";
}

TEST_F(EditorInspectorTest, foldedGroupStaysFoldedForTheNextObject)
{
    select({"Left"});
    click(centre(line("transform")) - QPoint(60, 0));
    EXPECT_FALSE(shown("transform.scale", InspectorModel::ShownRole).toBool());
    select({"Near"});
    EXPECT_FALSE(shown("transform.scale", InspectorModel::ShownRole).toBool());
    EXPECT_TRUE(shown("material.metallic", InspectorModel::ShownRole).toBool());
}

} // namespace test
