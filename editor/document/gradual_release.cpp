#include "gradual_release.h"

namespace editor {

namespace {

// The clock costs more than an object.
constexpr int objectsAtOnce = 64;

} // namespace

GradualRelease::GradualRelease(std::chrono::nanoseconds slice) : m_slice(slice)
{
    m_timer.setInterval(0);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { advance(); });
}

void GradualRelease::add(SceneObjectPtr tree)
{
    m_objects.push_back(std::move(tree));
    m_timer.start();
}

void GradualRelease::advance()
{
    const auto end = std::chrono::steady_clock::now() + m_slice;
    do {
        for (int i = 0; i < objectsAtOnce && !m_objects.empty(); ++i)
            SceneObject::releaseLast(m_objects);
    } while (!m_objects.empty() && std::chrono::steady_clock::now() < end);
    if (m_objects.empty()) {
        m_objects = {};
        m_timer.stop();
    }
}

} // namespace editor
