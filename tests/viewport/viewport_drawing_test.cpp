#include "mesh_samples.h"

#include <editor/viewport/viewport_surface.h>
#include <editor/viewport/viewport_types.h>

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace editor {

namespace {

const QColor red(200, 40, 40);
const QColor green(40, 180, 60);
const QColor blue(50, 80, 210);

class ViewportDrawingTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        requestViewportGraphics();
        registerViewportTypes();
    }

    ViewportDrawingTest()
    {
        ViewportItem mirrored = meshItem(3, cubeMesh(), {2, 0, 0}, blue);
        mirrored.transform.scale(-1, 1, 1);
        m_controller.setItems({meshItem(1, cubeMesh(), {-2, 0, 0}, red),
                               meshItem(2, cubeMesh(), {}, green), mirrored,
                               lightItem(4, {0, 1.5f, 0})});

        m_view.setResizeMode(QQuickView::SizeRootObjectToView);
        m_view.resize(640, 400);
        m_view.setSource(QUrl(QStringLiteral("qrc:/editor/viewport/Viewport3D.qml")));
        m_view.rootObject()->setProperty("controller", QVariant::fromValue(&m_controller));
        m_view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_view));
        m_controller.lookFrom(0, 20);
        m_controller.frameAll();
    }

    ViewportSurface* surface() { return m_view.rootObject()->findChild<ViewportSurface*>(); }
    // Until nothing is drawn for a while; a view that never rests fails.
    void waitForRest()
    {
        m_view.grabWindow(); // also waits for a frame on its way
        QSignalSpy frames(&m_view, &QQuickWindow::frameSwapped);
        EXPECT_TRUE(QTest::qWaitFor([&frames] { return !frames.wait(300); }, 20000));
    }
    QColor pixel(const QPointF& position)
    {
        return m_view.grabWindow().pixelColor(position.toPoint());
    }
    QColor pixel(quint32 id) { return pixel(m_controller.projectToScreen(id)); }

    // Lit differently on each side, an item keeps its hue.
    static bool looksLike(const QColor& seen, const QColor& color)
    {
        const int away = std::abs(seen.hsvHue() - color.hsvHue());
        return std::min(away, 360 - away) < 12 && seen.hsvSaturation() > 90;
    }

    ViewportController m_controller;
    QQuickView m_view;
};

} // namespace

TEST_F(ViewportDrawingTest, itemsAppearWhereTheyAreProjected)
{
    EXPECT_TRUE(looksLike(pixel(1), red)) << pixel(1).name().toStdString();
    EXPECT_TRUE(looksLike(pixel(2), green)) << pixel(2).name().toStdString();
    EXPECT_TRUE(looksLike(pixel(3), blue)) << pixel(3).name().toStdString();

    ViewportItem moved = meshItem(2, cubeMesh(), {0, -1.2f, 0}, blue);
    const QPointF left = m_controller.projectToScreen(2);
    m_controller.updateItem(moved);
    EXPECT_TRUE(looksLike(pixel(2), blue));
    EXPECT_FALSE(looksLike(pixel(left), green));
    moved.visible = false;
    m_controller.updateItem(moved);
    EXPECT_FALSE(looksLike(pixel(2), blue));
    moved.visible = true;
    m_controller.updateItem(moved);
    EXPECT_TRUE(looksLike(pixel(2), blue));

    ASSERT_TRUE(m_controller.insertItems({meshItem(9, cubeMesh(), {0, 90, -3}, red)}, {1, 0}));
    m_controller.updateItem(meshItem(9, cubeMesh(), {0, 1.5f, -3}, red));
    const QPointF place = m_controller.projectToScreen(9);
    EXPECT_TRUE(looksLike(pixel(place), red));
    m_controller.removeItems(9);
    m_controller.removeItems(2);
    EXPECT_FALSE(looksLike(pixel(place), red));
    EXPECT_EQ(m_controller.meshCount(), 2);

    m_controller.exchangeItems(PreparedItems::from({meshItem(1, cubeMesh(), {}, red)}));
    m_controller.updateItem(meshItem(1, cubeMesh(), {}, green));
    EXPECT_TRUE(looksLike(pixel(1), green));
}

TEST_F(ViewportDrawingTest, highlightsOutlineTheItem)
{
    const auto shows = [this](const char* property) {
        const QColor color = m_view.rootObject()->property(property).value<QColor>();
        const QImage image = m_view.grabWindow();
        for (int y = 40; y < image.height(); ++y) { // below the tools
            for (int x = 0; x < image.width(); ++x) {
                const QColor seen = image.pixelColor(x, y);
                if (std::abs(seen.red() - color.red()) + std::abs(seen.green() - color.green()) +
                        std::abs(seen.blue() - color.blue()) <
                    12)
                    return true;
            }
        }
        return false;
    };
    EXPECT_FALSE(shows("selectionColor"));
    m_controller.setSelectedIds({1, 4, 3});
    EXPECT_TRUE(shows("selectionColor"));
    EXPECT_TRUE(shows("primaryColor"));
    EXPECT_FALSE(shows("hoverColor"));
    m_controller.setSelectedIds({});
    m_controller.setHoveredId(2);
    EXPECT_TRUE(shows("hoverColor"));
    EXPECT_FALSE(shows("primaryColor"));
    m_controller.setHoveredId(0);
    EXPECT_FALSE(shows("hoverColor"));

    // A group of many shows what is in it, and nothing else.
    ViewportItem group = meshItem(10, nullptr, {});
    group.descendants = 20;
    std::vector<ViewportItem> items{meshItem(1, cubeMesh(), {-3, 0, 0}), group};
    for (quint32 id = 11; id <= 30; ++id)
        items.push_back(meshItem(id, cubeMesh(), {2, float(id) * 0.01f, 0}));
    m_controller.exchangeItems(PreparedItems::from(std::move(items)));
    m_controller.frameAll();
    const QColor alone = pixel(1);
    const QColor within = pixel(11);
    m_controller.setHoveredId(10);
    EXPECT_TRUE(shows("hoverColor"));
    EXPECT_EQ(alone, pixel(1));
    EXPECT_NE(within, pixel(11));
}

TEST_F(ViewportDrawingTest, keepsUpWithResizeThemeAndAnotherWindow)
{
    m_view.resize(900, 300);
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return m_controller.viewportSize() == QSizeF(900, 300); }));
    m_controller.frameAll();
    m_view.rootObject()->setProperty("dark", false);
    EXPECT_TRUE(looksLike(pixel(1), red));
    EXPECT_GT(pixel(QPointF(450, 5)).lightness(), 128);

    m_view.hide(); // drops the graphics
    m_view.releaseResources();
    m_view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_view));
    EXPECT_TRUE(looksLike(pixel(3), blue));

    m_view.rootObject()->setProperty("controller", QVariant());
    EXPECT_FALSE(looksLike(pixel(QPointF(450, 150)), green));
}

TEST_F(ViewportDrawingTest, hoverAndOneMoreOf100000ItemsListNoneOfTheOthersAgain)
{
    const MeshGeometryPtr mesh = cubeMesh();
    std::vector<ViewportItem> items{meshItem(1, nullptr, {})};
    items.front().descendants = 100000;
    for (quint32 id = 2; id <= 100001; ++id)
        items.push_back(meshItem(id, mesh, {float(id % 400) * 2, 0, float(id / 400) * 2}));
    m_controller.exchangeItems(PreparedItems::from(std::move(items)));
    m_controller.frameAll();
    m_controller.setSelectedIds({1, 777});
    const DrawCounts& counts = surface()->drawCounts();
    waitForRest();
    const int scenes = counts.scenes;
    const int listed = counts.listed;
    const int frames = counts.frames;
    EXPECT_GE(listed, 100000);
    EXPECT_LT(listed, 200000);

    for (quint32 id : {2u, 1u, 50000u, 1u}) { // the group and items in it
        m_controller.setHoveredId(id);
        waitForRest();
    }
    m_controller.leave();
    waitForRest();
    EXPECT_EQ(scenes, counts.scenes);
    EXPECT_EQ(listed + 2, counts.listed);
    EXPECT_LE(counts.frames, frames + 5);
    EXPECT_GT(counts.frames, frames);
    m_controller.lookFrom(30, 30);
    waitForRest();
    EXPECT_EQ(scenes + 1, counts.scenes);
    EXPECT_EQ(listed + 2, counts.listed);

    ASSERT_TRUE(m_controller.insertItems({meshItem(200000, mesh, {1, 5, 1})}, {1, 500}));
    waitForRest();
    m_controller.removeItems(300);
    waitForRest();
    EXPECT_EQ(scenes + 3, counts.scenes);
    EXPECT_EQ(listed + 3, counts.listed);
    EXPECT_EQ(100000, m_controller.meshCount());
}

} // namespace editor
