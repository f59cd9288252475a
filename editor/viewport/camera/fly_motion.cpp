#include "fly_motion.h"

#include <Qt>

#include <iterator>

namespace editor {

namespace {

struct FlyKey
{
    int key;
    QVector3D way;
};

const FlyKey flyKeys[] = {{Qt::Key_W, {0, 0, 1}}, {Qt::Key_S, {0, 0, -1}},
                          {Qt::Key_D, {1, 0, 0}}, {Qt::Key_A, {-1, 0, 0}},
                          {Qt::Key_E, {0, 1, 0}}, {Qt::Key_Q, {0, -1, 0}}};

} // namespace

bool FlyMotion::hold(int key, bool isDown)
{
    for (std::size_t i = 0; i < std::size(flyKeys); ++i) {
        if (flyKeys[i].key != key)
            continue;
        m_held = isDown ? m_held | (1u << i) : m_held & ~(1u << i);
        return true;
    }
    return false;
}

QVector3D FlyMotion::direction() const
{
    QVector3D way;
    for (std::size_t i = 0; i < std::size(flyKeys); ++i) {
        if (m_held & (1u << i))
            way += flyKeys[i].way;
    }
    return way.normalized();
}

} // namespace editor
