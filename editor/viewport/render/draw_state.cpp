#include "draw_state.h"

#include <editor/viewport/items/item_set.h>

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLShaderProgram>

namespace editor {

QOpenGLExtraFunctions* openGl()
{
    return QOpenGLContext::currentContext()->extraFunctions();
}

void resetDrawState()
{
    auto* gl = openGl();
    gl->glDisable(GL_SCISSOR_TEST);
    gl->glDisable(GL_CULL_FACE);
    gl->glDisable(GL_STENCIL_TEST);
    gl->glDisable(GL_BLEND);
    gl->glDisable(GL_DEPTH_TEST);
    gl->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    gl->glDepthMask(GL_TRUE);
    gl->glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
}

void drawTo(QOpenGLFramebufferObject& target)
{
    target.bind();
    openGl()->glViewport(0, 0, target.width(), target.height());
    resetDrawState();
}

void useProgram(QOpenGLShaderProgram& program, const SceneView& view)
{
    program.bind();
    program.setUniformValue("viewProjection", view.viewProjection);
    program.setUniformValue("eyePosition", view.eye);
    program.setUniformValue("viewportSize", view.size);
    program.setUniformValue("markerRadius", ItemSet::markerRadius);
    program.setUniformValue("markerLift", ItemSet::markerLift);
}

QRect pixelsOf(const Box& box, const SceneView& view, const QSize& target)
{
    const QRect whole(QPoint(), target);
    if (box.isEmpty())
        return {};
    const double scale = target.width() / view.size.width();
    QRectF covered;
    for (int i = 0; i < 8; ++i) {
        const QVector4D clip = view.viewProjection * QVector4D(box.corner(i), 1.0f);
        if (!(clip.w() > 0.0f))
            return whole;
        const QPointF corner((double(clip.x() / clip.w()) + 1) / 2 * target.width(),
                             (double(clip.y() / clip.w()) + 1) / 2 * target.height());
        const double margin = double(ItemSet::markerRadius) * 1.5 * scale;
        covered |= QRectF(corner, QSizeF()).adjusted(-margin, -margin, margin, margin);
    }
    return (covered & QRectF(whole)).toAlignedRect() & whole;
}

} // namespace editor
