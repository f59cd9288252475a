#include "mesh_samples.h"

#include <editor/viewport/viewport_controller.h>

#include <QTest>

#include <gtest/gtest.h>

namespace editor {

namespace {

class ViewportControllerTest : public ::testing::Test
{
protected:
    ViewportControllerTest()
    {
        m_controller.setViewportSize({800, 600});
        m_controller.lookFrom(0, 20);
        m_controller.setItems({meshItem(1, cubeMesh(), {-2, 0, 0}), meshItem(2, cubeMesh(), {}),
                               meshItem(3, cubeMesh(), {2, 0, 0}), lightItem(4, {0, 2, 0})});
        m_controller.frameAll();

        QObject::connect(&m_controller, &ViewportController::picked,
                         [this](quint32 id, Qt::KeyboardModifiers modifiers) {
                             const bool control = modifiers & Qt::ControlModifier;
                             m_log << QStringLiteral("pick %1%2").arg(id).arg(control ? "+" : "");
                         });
        const auto log = [this](const char* name) {
            return [this, name](quint32 id) { m_log << QString::fromLatin1(name).arg(id); };
        };
        QObject::connect(&m_controller, &ViewportController::hovered, log("hover %1"));
        QObject::connect(&m_controller, &ViewportController::activated, log("activate %1"));
        QObject::connect(&m_controller, &ViewportController::contextMenuRequested, log("menu %1"));
        QObject::connect(&m_controller, &ViewportController::rubberBandSelected,
                         [this](const std::vector<quint32>& ids) {
                             m_log << QStringLiteral("band");
                             for (quint32 id : ids)
                                 m_log.last() += QStringLiteral(" %1").arg(id);
                         });
    }

    QPointF at(quint32 id) const { return m_controller.projectToScreen(id); }
    void drag(const QPointF& from, const QPointF& to, Qt::MouseButton button,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        m_controller.press(from, button, int(modifiers));
        m_controller.move((from + to) / 2);
        m_controller.move(to);
        m_controller.release(to, button, int(modifiers));
    }
    static void passFrame() { QTest::qWait(40); }
    std::string takeLog()
    {
        const QString text = m_log.join(QStringLiteral(", "));
        m_log.clear();
        return text.toStdString();
    }

    ViewportController m_controller;
    QStringList m_log;
};

} // namespace

TEST_F(ViewportControllerTest, clicksAreReportedAndLeaveTheSelectionToTheHost)
{
    drag(at(2), at(2), Qt::LeftButton);
    drag(at(4), at(4) + QPointF(2, 1), Qt::LeftButton, Qt::ControlModifier);
    drag({2, 2}, {2, 2}, Qt::LeftButton);
    drag(at(3), at(3), Qt::RightButton);
    m_controller.doubleClick(at(1));
    m_controller.doubleClick({2, 2});
    EXPECT_EQ("pick 2, pick 4+, pick 0, menu 3, activate 1", takeLog());
    EXPECT_TRUE(m_controller.selectedIds().empty());
}

TEST_F(ViewportControllerTest, clicksOnTheSamePlaceGoOnToWhatIsBehind)
{
    m_controller.lookFrom(90, 0);
    const QPointF row = at(2); // with 3 before and 1 behind it
    const auto clickAgain = [&](Qt::KeyboardModifiers modifiers = {}) {
        drag(row, row, Qt::LeftButton, modifiers);
        const QString pick = m_log.join(' ');
        if (!modifiers)
            m_controller.setSelectedIds({pick.mid(5).toUInt()});
        return takeLog();
    };
    EXPECT_EQ("pick 3", clickAgain());
    EXPECT_EQ("pick 2", clickAgain());
    EXPECT_EQ("pick 3+", clickAgain(Qt::ControlModifier)) << "a toggle takes what shows";
    EXPECT_EQ("pick 3", clickAgain()) << "another pick came between";
    EXPECT_EQ("pick 2", clickAgain());
    m_controller.press(row, Qt::LeftButton, 0);
    m_controller.doubleClick(row);
    m_controller.release(row, Qt::LeftButton, 0);
    EXPECT_EQ("activate 2", m_log.first().toStdString());
    m_log.clear();
    EXPECT_EQ("pick 1", clickAgain());
    EXPECT_EQ("pick 3", clickAgain()) << "and from the last to the first";
    m_controller.setSelectedIds({1});
    EXPECT_EQ("pick 3", clickAgain()) << "selected elsewhere";
}

TEST_F(ViewportControllerTest, keysFlyWhileTheRightButtonIsHeldAndChooseToolsOtherwise)
{
    const QVector3D before = m_controller.camera().eye();
    m_controller.press({10, 10}, Qt::RightButton, 0);
    EXPECT_TRUE(m_controller.keyPress(Qt::Key_W, 0));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const OrbitCamera& camera = m_controller.camera();
        return QVector3D::dotProduct(camera.eye() - before, camera.forward()) > 0.05f;
    }));
    EXPECT_TRUE(m_controller.keyRelease(Qt::Key_W));
    m_controller.release({10, 10}, Qt::RightButton, 0);
    EXPECT_EQ("", takeLog()) << "no context menu";
    const QVector3D stopped = m_controller.camera().eye();
    passFrame();
    EXPECT_EQ(stopped, m_controller.camera().eye());
    EXPECT_EQ(Gizmo::Tool::Move, m_controller.gizmo()->tool());

    for (const auto& [key, tool] : {std::pair(Qt::Key_E, Gizmo::Tool::Rotate),
                                    {Qt::Key_R, Gizmo::Tool::Scale},
                                    {Qt::Key_Q, Gizmo::Tool::None},
                                    {Qt::Key_W, Gizmo::Tool::Move}}) {
        EXPECT_TRUE(m_controller.keyPress(key, 0));
        EXPECT_EQ(tool, m_controller.gizmo()->tool());
        EXPECT_FALSE(m_controller.keyPress(key, int(Qt::AltModifier))) << "a menu's";
        EXPECT_FALSE(m_controller.keyPress(key, int(Qt::ControlModifier)));
    }
    EXPECT_FALSE(m_controller.keyPress(Qt::Key_F10, 0));
    EXPECT_FALSE(m_controller.keyPress(Qt::Key_Tab, 0));
    EXPECT_FALSE(m_controller.keyPress(Qt::Key_Escape, 0)) << "nothing to cancel";
}

TEST_F(ViewportControllerTest, keypadLooksFromTheSides)
{
    const auto view = [this](int key, Qt::KeyboardModifiers modifiers = {}) {
        EXPECT_TRUE(m_controller.keyPress(key, int(modifiers | Qt::KeypadModifier)));
        return QStringLiteral("%1 %2").arg(m_controller.yaw()).arg(m_controller.pitch());
    };
    EXPECT_EQ("-90 0", view(Qt::Key_3, Qt::ControlModifier));
    EXPECT_EQ("0 -90", view(Qt::Key_7, Qt::ControlModifier));
    EXPECT_EQ("0 -75", view(Qt::Key_8));
    EXPECT_EQ("15 -75", view(Qt::Key_6));
    EXPECT_EQ("-165 75", view(Qt::Key_9));
    EXPECT_FALSE(m_controller.keyPress(Qt::Key_1, 0)) << "the other digits mean nothing";
}

TEST_F(ViewportControllerTest, hoverIsReportedOnChangeAloneAndOnceAFrame)
{
    m_controller.move(at(2));
    for (int i = 0; i < 100; ++i)
        m_controller.move(at(i % 3 + 1));
    EXPECT_EQ("hover 2", takeLog());
    passFrame();
    EXPECT_EQ("hover 1", takeLog());
    passFrame();
    m_controller.move(at(1) + QPointF(1, 1));
    m_controller.setHoveredId(3); // the host's own is not news to it
    EXPECT_EQ((std::vector<quint32>{3}), m_controller.hoveredIds());
    m_controller.move(at(2));
    m_controller.leave();
    m_controller.leave();
    passFrame();
    EXPECT_EQ("hover 0", takeLog());
}

TEST_F(ViewportControllerTest, rubberBandSelectsWhatItTouches)
{
    QList<QRectF> bands;
    QObject::connect(&m_controller, &ViewportController::rubberBandChanged,
                     [&] { bands << m_controller.rubberBand(); });
    drag(at(3) + QPointF(30, 30), at(2) - QPointF(30, 30), Qt::LeftButton);
    EXPECT_EQ("band 2 3, hover 2", takeLog());
    ASSERT_GE(bands.size(), 2);
    EXPECT_TRUE(bands[1].contains(at(3)));
    EXPECT_TRUE(bands.back().isNull());

    m_controller.press({0, 0}, Qt::LeftButton, 0);
    m_controller.move({700, 500});
    m_controller.cancel();
    m_controller.release({700, 500}, Qt::LeftButton, 0);
    EXPECT_EQ("hover 0", takeLog());

    m_controller.press({10, 10}, Qt::LeftButton, 0);
    m_controller.move({200, 200});
    m_controller.press({200, 200}, Qt::RightButton, 0);
    m_controller.release({200, 200}, Qt::RightButton, 0);
    EXPECT_FALSE(m_controller.rubberBand().isNull()) << "a second button does not disturb it";
    m_controller.release({200, 200}, Qt::LeftButton, 0);
    EXPECT_TRUE(m_controller.rubberBand().isNull());
}

TEST_F(ViewportControllerTest, dragsMoveTheCameraAsTheirButtonsSay)
{
    using Case = std::tuple<Qt::MouseButton, Qt::KeyboardModifiers, bool, bool, bool>;
    for (const auto& [button, modifiers, turns, shifts, nears] :
         {Case{Qt::MiddleButton, Qt::NoModifier, true, false, false},
          Case{Qt::LeftButton, Qt::AltModifier, true, false, false},
          Case{Qt::RightButton, Qt::NoModifier, true, true, false},
          Case{Qt::MiddleButton, Qt::ShiftModifier, false, true, false},
          Case{Qt::MiddleButton, Qt::AltModifier, false, true, false},
          Case{Qt::RightButton, Qt::AltModifier, false, true, true}}) {
        const OrbitCamera before = m_controller.camera();
        drag({200, 200}, {260, 220}, button, modifiers);
        const OrbitCamera& after = m_controller.camera();
        EXPECT_EQ(turns, before.yaw() != after.yaw());
        EXPECT_EQ(shifts, before.target() != after.target());
        EXPECT_EQ(nears, before.distance() != after.distance());
    }
    EXPECT_EQ("", takeLog());
}

TEST_F(ViewportControllerTest, unknownIdsAreLeftOutOfHighlights)
{
    m_controller.setSelectedIds({1, 77, 3, 2, 78});
    EXPECT_EQ((std::vector<quint32>{1, 3, 2}), m_controller.selectedIds());
    m_controller.setHoveredId(77);
    EXPECT_TRUE(m_controller.hoveredIds().empty());
    EXPECT_TRUE(qIsNaN(m_controller.projectToScreen(77).x()));

    const float distance = m_controller.camera().distance();
    m_controller.frame({77});
    EXPECT_EQ(distance, m_controller.camera().distance());
    m_controller.setSelectedIds({2});
    EXPECT_TRUE(m_controller.keyPress(Qt::Key_F, 0));
    EXPECT_LT(m_controller.camera().distance(), distance);
    EXPECT_TRUE(m_controller.keyPress(Qt::Key_Home, 0));
    EXPECT_FLOAT_EQ(m_controller.camera().distance(), distance);
    m_controller.setItems({});
    EXPECT_TRUE(m_controller.selectedIds().empty());
}

} // namespace editor
