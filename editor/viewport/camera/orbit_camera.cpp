#include "orbit_camera.h"

#include <QtMath>

namespace editor {

namespace {

constexpr float fieldOfView = 40.0f; // degrees, vertical
constexpr float frameMargin = 1.15f;
constexpr float degreesPerPixel = 0.4f;
constexpr float lookShare = 0.5f; // what is seen passes by faster than when it is orbited
constexpr float maximalPitch = 90.0f;
constexpr float shortestDistance = 1e-4f;
constexpr float longestDistance = 1e7f;
constexpr float farthest = 1e12f;      // beyond, the matrices overflow
constexpr float leastOfPlace = 1e-6f;  // nearer to a place far out, the eye would fall on it
constexpr float mostOfDistance = 0.1f; // the target is not cut off, however large the scene is

const float halfHeight = std::tan(qDegreesToRadians(fieldOfView) / 2.0f); // at depth one

} // namespace

QVector3D OrbitCamera::forward() const
{
    const float yaw = qDegreesToRadians(m_yaw);
    const float pitch = qDegreesToRadians(m_pitch);
    return {-std::sin(yaw) * std::cos(pitch), -std::sin(pitch), -std::cos(yaw) * std::cos(pitch)};
}

QVector3D OrbitCamera::right() const
{
    const float yaw = qDegreesToRadians(m_yaw);
    return {std::cos(yaw), 0.0f, -std::sin(yaw)};
}

QVector3D OrbitCamera::up() const
{
    return QVector3D::crossProduct(right(), forward());
}

void OrbitCamera::setViewport(const QSizeF& size)
{
    m_viewport = size.expandedTo(QSizeF(1, 1));
}

void OrbitCamera::place(const QVector3D& target, float distance)
{
    if (std::isfinite(target.x()) && std::isfinite(target.y()) && std::isfinite(target.z()))
        m_target = target;
    if (std::isfinite(distance))
        m_distance = qBound(shortestDistance, distance, longestDistance);
}

void OrbitCamera::lookFrom(float yaw, float pitch)
{
    m_yaw = std::remainder(yaw, 360.0f);
    m_pitch = qBound(-maximalPitch, pitch, maximalPitch);
}

void OrbitCamera::orbit(const QPointF& pixels)
{
    lookFrom(m_yaw - float(pixels.x()) * degreesPerPixel,
             m_pitch + float(pixels.y()) * degreesPerPixel);
}

void OrbitCamera::look(const QPointF& pixels)
{
    const QVector3D place = eye();
    lookFrom(m_yaw - float(pixels.x()) * degreesPerPixel * lookShare,
             m_pitch + float(pixels.y()) * degreesPerPixel * lookShare);
    m_target = place + forward() * m_distance;
}

void OrbitCamera::moveBy(const QVector3D& way)
{
    m_target += right() * way.x() + up() * way.y() + forward() * way.z();
}

void OrbitCamera::pan(const QPointF& pixels)
{
    const float scale = pixelSize() * m_distance;
    m_target += (up() * float(pixels.y()) - right() * float(pixels.x())) * scale;
}

void OrbitCamera::zoom(float factor, const QPointF& anchor)
{
    const float distance = qBound(shortestDistance, m_distance * factor, longestDistance);
    const QVector3D anchored = rayAt(anchor).at(m_distance);
    m_target = anchored + (m_target - anchored) * (distance / m_distance);
    m_distance = distance;
}

void OrbitCamera::frame(const Box& box)
{
    if (box.isEmpty())
        return;
    const QVector3D centre = box.centre();
    float distance = box.size().isNull() ? m_distance / frameMargin : 0.0f;
    for (int i = 0; i < 8; ++i) {
        const QVector3D corner = box.corner(i) - centre;
        const float across = std::abs(QVector3D::dotProduct(corner, right())) / aspect();
        const float along = std::abs(QVector3D::dotProduct(corner, up()));
        const float nearer = -QVector3D::dotProduct(corner, forward());
        distance = std::max(distance, nearer + std::max(across, along) / halfHeight);
    }
    m_target = centre;
    m_distance = qBound(std::max(shortestDistance, centre.length() * leastOfPlace),
                        distance * frameMargin, longestDistance);
}

QMatrix4x4 OrbitCamera::view() const
{
    QMatrix4x4 matrix;
    matrix.lookAt(eye(), m_target, up());
    return matrix;
}

QMatrix4x4 OrbitCamera::projection() const
{
    QMatrix4x4 matrix;
    matrix.perspective(fieldOfView, aspect(), nearPlane(), farPlane());
    return matrix;
}

float OrbitCamera::farPlane() const
{
    const float reach = m_scene.isEmpty() ? 0.0f : (m_scene.centre() - eye()).length();
    const float end = std::max(m_distance * 40.0f, reach + m_scene.radius()) * 1.01f;
    return std::min(farthest, end); // also for an end that is no number
}

float OrbitCamera::nearPlane() const
{
    // The depth buffer tells 2^24 depths apart; a wider ratio would let surfaces flicker.
    return std::min(std::max(m_distance * 0.01f, farPlane() * 1e-5f), m_distance * mostOfDistance);
}

float OrbitCamera::pixelSize() const
{
    return 2.0f * halfHeight / float(m_viewport.height());
}

std::optional<QPointF> OrbitCamera::project(const QVector3D& point) const
{
    const QVector3D offset = point - eye();
    const float depth = QVector3D::dotProduct(offset, forward());
    if (!(depth > 0.0f))
        return std::nullopt;
    const float scale = depth * pixelSize();
    return QPointF(m_viewport.width() / 2 + double(QVector3D::dotProduct(offset, right()) / scale),
                   m_viewport.height() / 2 - double(QVector3D::dotProduct(offset, up()) / scale));
}

Ray OrbitCamera::rayAt(const QPointF& position) const
{
    const float x = float(position.x() - m_viewport.width() / 2) * pixelSize();
    const float y = float(m_viewport.height() / 2 - position.y()) * pixelSize();
    return {eye(), forward() + right() * x + up() * y};
}

ConvexVolume OrbitCamera::volumeOf(const QRectF& rectangle) const
{
    // Less than a pixel has no room for a plane on either side.
    QRectF area = rectangle.normalized();
    const double growX = std::max(0.0, 1.0 - area.width()) / 2;
    const double growY = std::max(0.0, 1.0 - area.height()) / 2;
    area.adjust(-growX, -growY, growX, growY);
    const QVector3D corners[] = {rayAt(area.topLeft()).direction, rayAt(area.topRight()).direction,
                                 rayAt(area.bottomRight()).direction,
                                 rayAt(area.bottomLeft()).direction};
    ConvexVolume volume;
    for (int i = 0; i < 4; ++i)
        volume.addPlane(QVector3D::crossProduct(corners[i], corners[(i + 1) % 4]), eye());
    volume.addPlane(forward(), eye() + forward() * nearPlane());
    return volume;
}

} // namespace editor
