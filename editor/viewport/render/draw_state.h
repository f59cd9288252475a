#pragma once

#include <editor/viewport/render/scene_changes.h>

class QOpenGLExtraFunctions;
class QOpenGLFramebufferObject;
class QOpenGLShaderProgram;

namespace editor {

// Each needs a current context.

QOpenGLExtraFunctions* openGl();

/// The state that every pass starts from: nothing cut off, blended or tested.
void resetDrawState();
/// Binds a target of the given size to draw to, in that state.
void drawTo(QOpenGLFramebufferObject& target);
/// Binds a program and hands it what every shader may ask of the camera.
void useProgram(QOpenGLShaderProgram& program, const SceneView& view);

/// The pixels of a target that a box may cover, y up; all of it when the box reaches behind the
/// eye. Markers in the box are covered as well.
QRect pixelsOf(const Box& box, const SceneView& view, const QSize& target);

} // namespace editor
