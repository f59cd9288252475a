#include <editor/viewport/camera/orbit_camera.h>

#include <gtest/gtest.h>

namespace editor {

namespace {

const Box box{{-3, 0, 5}, {11, 2, 6}};

class OrbitCameraTest : public ::testing::TestWithParam<std::tuple<float, float, QSizeF>>
{
protected:
    OrbitCameraTest()
    {
        const auto [yaw, pitch, size] = GetParam();
        m_camera.setViewport(size);
        m_camera.setSceneBounds(box);
        m_camera.lookFrom(yaw, pitch);
    }

    OrbitCamera m_camera;
};

} // namespace

TEST_P(OrbitCameraTest, frameFillsTheViewWithTheBox)
{
    m_camera.frame(box);
    const QRectF view(QPointF(), m_camera.viewport());
    QRectF seen;
    for (int i = 0; i < 8; ++i) {
        const auto corner = m_camera.project(box.corner(i));
        ASSERT_TRUE(corner);
        EXPECT_TRUE(view.contains(*corner));
        seen |= QRectF(*corner - QPointF(0.5, 0.5), QSizeF(1, 1));
    }
    EXPECT_TRUE(seen.width() > view.width() * 0.6 || seen.height() > view.height() * 0.6);
}

TEST_P(OrbitCameraTest, screenMathAgreesWithTheMatrices)
{
    m_camera.frame(box);
    m_camera.pan({31, -17});
    const QMatrix4x4 matrix = m_camera.projection() * m_camera.view();
    const QSizeF size = m_camera.viewport();
    for (int i = 0; i < 8; ++i) {
        const QVector4D clip = matrix * QVector4D(box.corner(i), 1);
        EXPECT_LE(std::abs(clip.z()), clip.w()) << "cut off by the near or far plane";
        const QVector3D device = clip.toVector3DAffine();
        const QPointF expected((double(device.x()) + 1) / 2 * size.width(),
                               (1 - double(device.y())) / 2 * size.height());
        const QPointF position = *m_camera.project(box.corner(i));
        EXPECT_NEAR(expected.x(), position.x(), 0.05);
        EXPECT_NEAR(expected.y(), position.y(), 0.05);

        const Ray ray = m_camera.rayAt(position);
        const float depth = QVector3D::dotProduct(box.corner(i) - ray.origin, m_camera.forward());
        EXPECT_NEAR(0, (ray.at(depth) - box.corner(i)).length(), 1e-3f);
    }
}

TEST_P(OrbitCameraTest, zoomAndPanKeepWhatIsUnderThePointer)
{
    m_camera.frame(box);
    const QPointF pointer(100, 60);
    const QVector3D under = m_camera.rayAt(pointer).at(m_camera.distance());
    const float distance = m_camera.distance();
    m_camera.zoom(0.5f, pointer);
    EXPECT_FLOAT_EQ(distance / 2, m_camera.distance());
    EXPECT_NEAR(0, (*m_camera.project(under) - pointer).manhattanLength(), 0.1);
    m_camera.pan({40, 25});
    EXPECT_NEAR(0, (*m_camera.project(under) - pointer - QPointF(40, 25)).manhattanLength(), 0.1);
}

INSTANTIATE_TEST_SUITE_P(Views, OrbitCameraTest,
                         ::testing::Combine(::testing::Values(0.0f, 40.0f, -170.0f),
                                            ::testing::Values(0.0f, 30.0f, -90.0f),
                                            ::testing::Values(QSizeF(800, 600), QSizeF(300, 900))));

TEST(OrbitCamera, staysUsableAtTheLimits)
{
    OrbitCamera camera;
    camera.frame(Box());
    EXPECT_FLOAT_EQ(10.0f, camera.distance());
    camera.frame(Box{{7, 7, 7}, {7, 7, 7}});
    EXPECT_EQ(QVector3D(7, 7, 7), camera.target());
    EXPECT_FLOAT_EQ(10.0f, camera.distance());
    camera.orbit({0, 1e6});
    EXPECT_FLOAT_EQ(90.0f, camera.pitch());
    EXPECT_NEAR(1.0f, camera.up().length(), 1e-5f);
    for (int i = 0; i < 1000; ++i)
        camera.zoom(0.5f, {320, 240});
    EXPECT_GT(camera.distance(), 0.0f);
    camera.setViewport({0, 0});
    EXPECT_TRUE(std::isfinite(camera.projection()(0, 0)));
    EXPECT_FALSE(camera.project(camera.eye() - camera.forward()));
}

} // namespace editor
