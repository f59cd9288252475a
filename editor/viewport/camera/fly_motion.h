#pragma once

#include <QVector3D>

namespace editor {

/// Which way held keys fly the camera: W A S D ahead, left, back and right, E up and Q down.
class FlyMotion
{
public:
    /// Whether the key takes part.
    bool press(int key) { return hold(key, true); }
    bool release(int key) { return hold(key, false); }
    void stop() { m_held = 0; }

    bool isMoving() const { return !direction().isNull(); }
    /// As the camera sees it: x to the right, y up, z ahead; of length one, or null.
    QVector3D direction() const;

private:
    bool hold(int key, bool isDown);

    unsigned m_held = 0; // a bit for each key
};

} // namespace editor
