#include "editor_test.h"

#include <editor/document/transform_math.h>

#include <QSignalSpy>

namespace test {

namespace {

class EditorGizmoTest : public EditorTest
{
protected:
    EditorGizmoTest()
    {
        session.viewport()->lookFrom(0, 20);
        session.view()->frameAll();
    }

    /// A place on a handle of the gizmo, in the window.
    QPoint handle(editor::GizmoHandle::Part part, int axis = 0)
    {
        const editor::GizmoLayout layout = session.viewport()->gizmo()->layout();
        for (const auto& shape : layout.shapes()) {
            const QPointF middle = shape.isFilled ? shape.points.boundingRect().center()
                                                  : shape.points[shape.points.size() / 4];
            if (shape.handle == editor::GizmoHandle{part, axis} &&
                layout.handleAt(middle) == shape.handle)
                return item("viewport")->mapToScene(middle).toPoint();
        }
        throw std::runtime_error("the handle does not show");
    }
    lumo::Vector3 position(const char* name) { return object(name)->transform()->position; }
    editor::TransformComponent transform(const char* name) { return *object(name)->transform(); }
    /// Presses and drags without a release.
    void take(const QPoint& from, const QPoint& way)
    {
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        QTest::mouseMove(window, from + way / 2);
        QTest::mouseMove(window, from + way);
    }
    void letGo(const QPoint& at) { QTest::mouseRelease(window, Qt::LeftButton, {}, at); }

    static constexpr auto axisPart = editor::GizmoHandle::Part::Axis;
};

} // namespace

TEST_F(EditorGizmoTest, aDragMovesTheSelectionAsOneNamedStepAndShowsItsFigures)
{
    click(rowPoint("Near"));
    click(item("tool_move")->mapToScene({5, 5}).toPoint());
    const QPoint from = handle(axisPart, 0);
    take(from, {60, 0});
    EXPECT_TRUE(text("gizmo_readout").startsWith("X  +"));
    EXPECT_EQ(undoName(), "Set asset selection") << "nothing is recorded before the end";
    EXPECT_TRUE(session.document()->isStepOpen()) << "nor saved";
    const float moved = position("Near").x;
    EXPECT_GT(moved, -1.9f);
    letGo(from + QPoint(60, 0));
    EXPECT_EQ(undoName(), "Move Near");
    EXPECT_FALSE(session.document()->isStepOpen());
    EXPECT_EQ(position("Near").x, moved);
    EXPECT_EQ(position("Near").y, 0);
    EXPECT_FALSE(shows("gizmo_readout"));

    undo();
    EXPECT_EQ(position("Near").x, -2);
    EXPECT_EQ(selection(), QStringList({"Near"}));
    redo();
    EXPECT_EQ(position("Near").x, moved);

    undo();
    const QPoint arrow = handle(axisPart, 0);
    display.drag(arrow, arrow + QPoint(60, 0), "2 period 9 BackSpace 5 Return");
    EXPECT_EQ(position("Near").x, 0.5f) << "what is typed counts";
    EXPECT_EQ(undoName(), "Move Near");
    EXPECT_EQ(selection(), QStringList({"Near"})) << "the release does nothing more";
    undo();
    const QPoint plane = handle(editor::GizmoHandle::Part::Plane, 2);
    display.drag(plane, plane + QPoint(9, 9), "1 Tab minus 3");
    EXPECT_EQ(position("Near").x, -1);
    EXPECT_EQ(position("Near").y, -3);
}

TEST_F(EditorGizmoTest, escapeAndUndoTakeADragBack)
{
    click(viewPoint("Near"));
    const auto takeUp = [this](const std::function<void()>& end) {
        const QPoint from = handle(axisPart, 1);
        take(from, {0, -60});
        EXPECT_GT(position("Near").y, 0.1f);
        end();
        EXPECT_EQ(position("Near").y, 0);
        letGo(from + QPoint(0, -60));
        EXPECT_EQ(position("Near").y, 0);
    };
    takeUp([this] { key(Qt::Key_Escape); });
    EXPECT_EQ(undoName(), "Set asset selection");
    EXPECT_FALSE(session.document()->isModified());
    EXPECT_EQ(selection(), QStringList({"Near"}));

    const QPoint from = handle(axisPart, 0);
    drag(from, from + QPoint(50, 0));
    const float once = position("Near").x;
    EXPECT_GT(once, -1.9f);
    takeUp([this] { undo(); });
    EXPECT_EQ(position("Near").x, -2);
    redo();
    EXPECT_EQ(position("Near").x, once);
    EXPECT_EQ(position("Near").y, 0);
}

TEST_F(EditorGizmoTest, keysChooseTheToolAndSeveralObjectsTurnAboutTheirMiddle)
{
    click(viewPoint("Near"));
    click(viewPoint("Far"), Qt::ControlModifier);
    key(Qt::Key_E);
    key(Qt::Key_Z);
    EXPECT_EQ(text("gizmo_pivot"), "Centre");
    const QPoint middle = (viewPoint("Near") + viewPoint("Far")) / 2;
    const QPoint from = middle + QPoint(int(editor::GizmoLayout::reach), 0);
    const QPoint to = middle - QPoint(0, int(editor::GizmoLayout::reach));
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    QTest::mouseMove(window, (from + to) / 2);
    // Ctrl snaps to steps of 15 degrees.
    QMouseEvent snapped(QEvent::MouseMove, to, to, to, Qt::NoButton, Qt::LeftButton,
                        Qt::ControlModifier);
    QCoreApplication::sendEvent(window, &snapped);
    EXPECT_EQ(text("gizmo_readout"), "+90.0°");
    EXPECT_EQ(text("gizmo_remark"), "2 objects");
    QTest::mouseRelease(window, Qt::LeftButton, Qt::ControlModifier, to);
    EXPECT_EQ(undoName(), "Rotate 2 objects");
    // About the line of sight, a quarter to the left: what stood right stands above.
    EXPECT_NEAR(position("Far").x, 0, 0.01);
    EXPECT_NEAR(position("Near").x, 0, 0.01);
    EXPECT_GT(position("Far").y, 1.5f);

    key(Qt::Key_Q);
    EXPECT_TRUE(session.viewport()->gizmo()->layout().isEmpty());
}

TEST_F(EditorGizmoTest, whatIsLockedOrBelowAnotherStaysWhereItIs)
{
    set("Far", "locked", "true");
    click(rowPoint("Lamps"));
    openRow("Lamps");
    click(rowPoint("Left"), Qt::ControlModifier);
    click(rowPoint("Far"), Qt::ControlModifier);
    session.viewport()->gizmo()->setTool(editor::Gizmo::Tool::Move);
    const QPoint from = handle(axisPart, 1);
    take(from, {0, -50});
    letGo(from + QPoint(0, -50));
    EXPECT_EQ(undoName(), "Move Lamps");
    EXPECT_GT(position("Lamps").y, 0.1f);
    EXPECT_EQ(position("Left").y, 3) << "it moves with its group";
    EXPECT_EQ(position("Far").y, 0);

    EXPECT_TRUE(QTest::qWaitFor([&] { return text("message_text").contains("Far"); }));

    click(rowPoint("Far"));
    EXPECT_TRUE(session.viewport()->gizmo()->isFixed());
}

TEST_F(EditorGizmoTest, turnsAndSizesAreThoseOfTheObjectWhateverItsParentIs)
{
    object("Lamps")->transform()->rotation = {0, 0, 90};
    object("Left")->transform()->scale = {1, -2, 1};
    editor::GizmoChange turn;
    turn.tool = editor::Gizmo::Tool::Rotate;
    turn.turnAxis = {0, 1, 0};
    turn.angle = 120;
    const QMatrix4x4 parent = editor::worldTransform(*object("Lamps"));
    const auto turned =
        editor::changedTransform(transform("Left"), parent, parent.inverted(), turn);
    EXPECT_EQ(turned.scale.y, -2);
    QMatrix4x4 rotation;
    rotation.rotate(120, 0, 1, 0);
    const QMatrix4x4 expected = rotation * editor::worldTransform(*object("Left"));
    const QMatrix4x4 actual = parent * editor::matrixOf(turned);
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(expected.constData()[i], actual.constData()[i], 1e-4) << i;
    // A third of a turn about one axis stays one figure.
    const auto plain =
        editor::changedTransform(transform("Near"), QMatrix4x4(), QMatrix4x4(), turn);
    EXPECT_NEAR(plain.rotation.y, 120, 1e-3);
    EXPECT_NEAR(plain.rotation.x, 0, 1e-3);

    editor::GizmoChange size;
    size.tool = editor::Gizmo::Tool::Scale;
    size.factors = {1, 3, 1};
    const auto sized = editor::changedTransform(transform("Left"), parent, parent.inverted(), size);
    EXPECT_EQ(sized.scale.y, -6);
    EXPECT_EQ(sized.rotation.z, 0);
}

} // namespace test
