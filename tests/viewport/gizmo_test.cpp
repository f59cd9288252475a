#include <editor/viewport/gizmo/gizmo_controller.h>

#include <QLineF>
#include <QtMath>

#include <gtest/gtest.h>

namespace editor {

namespace {

using Part = GizmoHandle::Part;
using Tool = Gizmo::Tool;

class GizmoTest : public ::testing::Test
{
protected:
    GizmoTest()
    {
        m_camera.setViewport({800, 600});
        m_camera.lookFrom(30, 25);
        m_camera.frame(Box{{-3, -3, -3}, {5, 3, 3}});
        QMatrix4x4 turn;
        turn.rotate(40, 0, 1, 0);
        for (int i = 0; i < 3; ++i)
            m_frame.axes[std::size_t(i)] = turn.column(i).toVector3D();
        m_frame.origin = {1, 0.5f, -1};
    }

    QPointF at(const QVector3D& place) const { return *m_camera.project(place); }
    QVector3D axis(int i) const { return m_frame.axes[std::size_t(i)]; }
    // The change after a drag of a handle from a place in the world to another one.
    GizmoChange dragged(Tool tool, GizmoHandle handle, const QVector3D& from, const QVector3D& to,
                        const std::optional<GizmoSteps>& steps = std::nullopt)
    {
        GizmoDrag drag(tool, handle, m_frame, m_camera, at(from));
        drag.moveTo(at((from + to) / 2));
        drag.moveTo(at(to));
        return drag.change(steps);
    }
    static void expectNear(const QVector3D& expected, const QVector3D& actual)
    {
        EXPECT_NEAR(0, (expected - actual).length(), 2e-3f)
            << actual.x() << ' ' << actual.y() << ' ' << actual.z();
    }

    OrbitCamera m_camera;
    GizmoFrame m_frame;
};

} // namespace

TEST_F(GizmoTest, movesByWhatThePointerPassesInTheWorld)
{
    for (int i = 0; i < 3; ++i) {
        const QVector3D from = m_frame.origin + axis(i) * 0.4f;
        const QVector3D way = axis(i) * 1.7f;
        expectNear(way, dragged(Tool::Move, {Part::Axis, i}, from, from + way).translation());
        const QVector3D inside = m_frame.origin + axis((i + 1) % 3) * 0.3f;
        const QVector3D slant = axis((i + 1) % 3) * 0.8f + axis((i + 2) % 3) * -1.1f;
        const GizmoChange inPlane = dragged(Tool::Move, {Part::Plane, i}, inside, inside + slant);
        expectNear(slant, inPlane.translation());
        EXPECT_EQ(0.0f, inPlane.offset[i]);
        expectNear(inside + slant, inPlane.map(inside));
    }
    const QVector3D across = m_camera.right() * 0.9f + m_camera.up() * 0.6f;
    expectNear(across, dragged(Tool::Move, {Part::View, 0}, m_frame.origin, m_frame.origin + across)
                           .translation());
    const GizmoChange stepped = dragged(Tool::Move, {Part::Axis, 0}, m_frame.origin,
                                        m_frame.origin + axis(0) * 1.7f, GizmoSteps());
    expectNear(axis(0) * 1.5f, stepped.translation());
    EXPECT_EQ("X  +1.50 m", stepped.text().toStdString());
}

TEST_F(GizmoTest, turnsWithThePointerAlsoBeyondHalfATurn)
{
    m_camera.lookFrom(85, 25); // onto no ring from its side
    for (int i = 0; i < 3; ++i) {
        const QVector3D u = axis((i + 1) % 3) * 1.5f;
        const QVector3D v = axis((i + 2) % 3) * 1.5f;
        const auto onRing = [&](double degrees) {
            const float angle = float(qDegreesToRadians(degrees));
            return m_frame.origin + u * std::cos(angle) + v * std::sin(angle);
        };
        GizmoDrag drag(Tool::Rotate, {Part::Axis, i}, m_frame, m_camera, at(onRing(20)));
        for (int degrees = 20; degrees <= 290; degrees += 30)
            drag.moveTo(at(onRing(degrees)));
        const GizmoChange change = drag.change(std::nullopt);
        EXPECT_NEAR(270, change.angle, 0.5);
        expectNear(onRing(270), change.map(onRing(0)));
        EXPECT_EQ(270.0f, drag.change(GizmoSteps()).angle);
    }
    // A ring seen from its side turns along its edge, the outer circle about the line of sight.
    m_camera.lookFrom(0, 0);
    m_frame.axes = GizmoFrame().axes;
    const QVector3D edge = m_frame.origin + QVector3D(0, 0, 1);
    EXPECT_GT(dragged(Tool::Rotate, {Part::Axis, 1}, edge, edge + QVector3D(1, 0, 0)).angle, 20.0f);
    const GizmoChange roll =
        dragged(Tool::Rotate, {Part::View, 0}, m_frame.origin + axis(0), m_frame.origin + axis(1));
    expectNear(m_frame.origin + axis(1), roll.map(m_frame.origin + axis(0)));
    EXPECT_EQ("+90.0°", roll.text().toStdString());
}

TEST_F(GizmoTest, scalesOneAxisOrAllAndNeverToNothing)
{
    const QVector3D end = m_frame.origin + axis(1);
    const GizmoChange taller = dragged(Tool::Scale, {Part::Axis, 1}, end, end + axis(1) * 0.5f);
    EXPECT_GT(taller.factors.y(), 1.1f);
    EXPECT_EQ(QVector3D(1, taller.factors.y(), 1), taller.factors);
    expectNear(m_frame.origin + axis(0) + axis(1) * taller.factors.y(), taller.map(end + axis(0)));

    const QVector3D gone = m_frame.origin - axis(1) * 50.0f;
    const GizmoChange flat = dragged(Tool::Scale, {Part::Axis, 1}, end, gone);
    EXPECT_GT(flat.factors.y(), 0.0f);

    GizmoDrag all(Tool::Scale, {Part::View, 0}, m_frame, m_camera, {400, 300});
    all.moveTo({500, 300});
    EXPECT_EQ(QVector3D(2, 2, 2), all.change(std::nullopt).factors);
    all.moveTo({500, 800}, true); // finely
    EXPECT_NEAR(std::pow(2.0, 0.5), double(all.change(std::nullopt).factors.x()), 1e-4);
    EXPECT_EQ("× 1.40", all.change(GizmoSteps()).text().toStdString());
}

TEST_F(GizmoTest, waysToTheHorizonLeaveTheLastResult)
{
    m_camera.lookFrom(0, 5);
    m_frame.axes = GizmoFrame().axes;
    GizmoDrag drag(Tool::Move, {Part::Plane, 1}, m_frame, m_camera, at(m_frame.origin));
    drag.moveTo(at(m_frame.origin + QVector3D(1, 0, 0)));
    const QVector3D last = drag.change(std::nullopt).translation();
    drag.moveTo({400, -5000});
    expectNear(last, drag.change(std::nullopt).translation());
}

TEST_F(GizmoTest, handlesAreWhereTheyShowAndNotWhereTheyCannotBeDragged)
{
    for (const Tool tool : {Tool::Move, Tool::Rotate, Tool::Scale}) {
        const GizmoLayout layout(tool, m_frame, m_camera);
        for (const GizmoLayout::Shape& shape : layout.shapes()) {
            const QPolygonF& points = shape.points;
            const int half = points.size() / 2;
            const QPointF middle = shape.isFilled ? points.boundingRect().center()
                                                  : (points[half] + points[half - 1]) / 2;
            EXPECT_EQ(shape.handle.part, layout.handleAt(middle).part);
            for (const QPointF& point : shape.points)
                EXPECT_LE(QLineF(point, layout.centre()).length(), GizmoLayout::reach + 8);
        }
        EXPECT_FALSE(layout.handleAt(layout.centre() + QPointF(150, 150)));
    }
    // Along an axis neither that axis nor the planes beside it show.
    m_camera.lookFrom(0, 0);
    m_frame = {m_camera.target(), GizmoFrame().axes};
    const GizmoLayout layout(Tool::Move, m_frame, m_camera);
    for (const GizmoLayout::Shape& shape : layout.shapes()) {
        EXPECT_NE((GizmoHandle{Part::Axis, 2}), shape.handle);
        EXPECT_TRUE(shape.handle.part != Part::Plane || shape.handle.axis == 2);
    }
    m_frame.origin = m_camera.eye() - m_camera.forward();
    EXPECT_TRUE(GizmoLayout(Tool::Move, m_frame, m_camera).isEmpty());
    EXPECT_TRUE(GizmoLayout(Tool::None, {}, m_camera).isEmpty());
}

TEST_F(GizmoTest, controllerTellsADragFromAClickAndCancels)
{
    GizmoController gizmo(m_camera);
    QStringList log;
    QObject::connect(&gizmo, &GizmoController::dragRefused, [&] { log << "refuse"; });
    QObject::connect(&gizmo, &GizmoController::dragStarted, [&] { log << "start"; });
    QObject::connect(&gizmo, &GizmoController::dragged, [&] { log << "drag"; });
    QObject::connect(&gizmo, &GizmoController::dragFinished, [&] { log << "finish"; });
    QObject::connect(&gizmo, &GizmoController::dragCanceled, [&] { log << "cancel"; });
    const QPointF middle = at(m_frame.origin);
    EXPECT_FALSE(gizmo.press(middle)) << "no target";
    gizmo.setTarget(GizmoTarget{m_frame.origin, m_frame.axes, true});
    EXPECT_FALSE(gizmo.press({2, 2}));
    EXPECT_FALSE(gizmo.press(middle)) << "a fixed one";
    gizmo.setTarget(GizmoTarget{m_frame.origin, m_frame.axes, false});
    EXPECT_FALSE(gizmo.press({2, 2}));

    ASSERT_TRUE(gizmo.press(middle));
    gizmo.drag(middle + QPointF(1, 1), {});
    EXPECT_FALSE(gizmo.release());
    ASSERT_TRUE(gizmo.press(middle));
    gizmo.drag(middle + QPointF(60, 0), Qt::ControlModifier);
    EXPECT_NE("", gizmo.readout());
    EXPECT_GT((gizmo.layout().centre() - middle).manhattanLength(), 20) << "it goes along";
    EXPECT_TRUE(gizmo.release());
    const QPointF now = gizmo.layout().centre();
    ASSERT_TRUE(gizmo.press(now));
    gizmo.drag(now + QPointF(0, 60), {});
    gizmo.cancel();
    gizmo.cancel();
    EXPECT_EQ(now, gizmo.layout().centre());
    EXPECT_EQ("refuse,start,finish,start,drag,finish,start,drag,cancel",
              log.join(',').toStdString());
    EXPECT_EQ("", gizmo.readout());

    EXPECT_EQ("0.5 m", gizmo.step().toStdString());
    gizmo.nextStep();
    EXPECT_EQ(1.0f, gizmo.steps().distance);
    gizmo.setTool(Tool::Rotate);
    for (int i = 0; i < 4; ++i)
        gizmo.nextStep();
    EXPECT_EQ("1°", gizmo.step().toStdString()) << "beyond the widest";
}

} // namespace editor
