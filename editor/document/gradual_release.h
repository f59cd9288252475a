#pragma once

#include <editor/document/scene_object.h>

#include <QTimer>

#include <chrono>

namespace editor {

/// Destroys trees of objects bit by bit from the event loop: one of 100,000 takes tens of
/// milliseconds. On the GUI thread like all that may still hold some of the objects; what is held
/// elsewhere stays with all below it.
class GradualRelease
{
public:
    explicit GradualRelease(std::chrono::nanoseconds slice);

    void add(SceneObjectPtr tree);

private:
    void advance();

    std::vector<SceneObjectPtr> m_objects;
    std::chrono::nanoseconds m_slice;
    QTimer m_timer;
};

} // namespace editor
