#include "scene_renderer.h"

#include "../item_set.h"
#include "shader_program.h"
#include "viewport_surface.h"

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLShaderProgram>
#include <QQuickWindow>

namespace editor {

namespace {

using Shape = InstanceList::Shape;

constexpr int samplesPerPixel = 4;
constexpr float outlineWidth = 2.0f; // pixels
constexpr float fillOpacity = 0.16f;
// An outline is the shape drawn once in each of so many directions, which gives flat and open
// meshes an even outline, too. outline.glsl counts on the number.
constexpr unsigned outlineRepeats = 8;

QOpenGLExtraFunctions* functions()
{
    return QOpenGLContext::currentContext()->extraFunctions();
}

} // namespace

SceneRenderer::SceneRenderer() = default;
SceneRenderer::~SceneRenderer() = default;

QOpenGLFramebufferObject* SceneRenderer::createFramebufferObject(const QSize& size)
{
    QOpenGLFramebufferObjectFormat format;
    format.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
    format.setSamples(samplesPerPixel);
    return new QOpenGLFramebufferObject(size, format);
}

void SceneRenderer::synchronize(QQuickFramebufferObject* item)
{
    auto* surface = static_cast<ViewportSurface*>(item);
    if (m_isNew)
        surface->forgetDrawn();
    m_isNew = false;
    m_window = surface->window();
    m_changes = surface->takeChanges();
}

void SceneRenderer::loadPrograms()
{
    m_vertexArray.create();
    m_meshProgram = loadProgram("mesh.vert", "mesh.frag");
    m_markerProgram = loadProgram("marker.vert", "marker.frag");
    m_gridProgram = loadProgram("grid.vert", "grid.frag");
    m_meshFill = loadProgram("mesh.vert", "highlight.frag");
    m_meshLine = loadProgram("mesh_outline.vert", "highlight.frag");
    m_markerFill = loadProgram("marker.vert", "highlight.frag");
    m_markerLine = loadProgram("marker_outline.vert", "highlight.frag");
}

void SceneRenderer::applyChanges()
{
    SceneChanges changes = std::exchange(m_changes, {});
    const bool mayDropMeshes = changes.items.has_value();
    if (changes.items)
        m_items.assign(*std::move(changes.items));
    for (const InstanceBuffer::Patch& patch : changes.patches)
        m_items.apply(patch);
    if (changes.selection)
        m_selection.assign(*std::move(changes.selection));
    if (changes.hover)
        m_hover.assign(*std::move(changes.hover));
    if (changes.view)
        m_view = *changes.view;
    if (changes.gridColor)
        m_gridColor = *changes.gridColor;
    if (mayDropMeshes)
        m_meshes.purge();
}

void SceneRenderer::render()
{
    if (!m_meshProgram)
        loadPrograms();
    applyChanges();

    auto* gl = functions();
    m_vertexArray.bind();
    gl->glViewport(0, 0, framebufferObject()->width(), framebufferObject()->height());
    gl->glDisable(GL_SCISSOR_TEST);
    gl->glDisable(GL_CULL_FACE);
    gl->glDisable(GL_BLEND);
    gl->glDisable(GL_STENCIL_TEST);
    gl->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    gl->glDepthMask(GL_TRUE);
    gl->glStencilMask(~0u);
    gl->glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    gl->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);

    drawItems();
    drawGrid();
    drawHighlight(m_selection, 1);
    drawHighlight(m_hover, 2);
    drawMarkers();

    m_vertexArray.release();
    m_window->resetOpenGLState();
}

void SceneRenderer::use(QOpenGLShaderProgram& program)
{
    program.bind();
    program.setUniformValue("viewProjection", m_view.viewProjection);
    program.setUniformValue("eyePosition", m_view.eye);
    program.setUniformValue("viewportSize", m_view.size);
    program.setUniformValue("markerRadius", ItemSet::markerRadius);
    program.setUniformValue("markerLift", ItemSet::markerLift);
    program.setUniformValue("outlineWidth", outlineWidth);
}

void SceneRenderer::drawItems()
{
    auto* gl = functions();
    gl->glEnable(GL_DEPTH_TEST);
    gl->glDepthFunc(GL_LESS);
    use(*m_meshProgram);
    m_items.draw(Shape::Mesh, m_view.volume, m_meshes);
}

void SceneRenderer::drawGrid()
{
    auto* gl = functions();
    // Colours come out of the shaders multiplied by their alpha, as Qt Quick composes them.
    gl->glEnable(GL_BLEND);
    gl->glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    gl->glDepthMask(GL_FALSE);
    gl->glDepthFunc(GL_LEQUAL);
    use(*m_gridProgram);
    m_gridProgram->setUniformValue("gridCentre", m_view.gridCentre);
    m_gridProgram->setUniformValue("gridReach", m_view.gridReach);
    m_gridProgram->setUniformValue("gridStep", m_view.gridStep);
    m_gridProgram->setUniformValue("gridBlend", m_view.gridBlend);
    m_gridProgram->setUniformValue("gridColor", m_gridColor);
    gl->glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
}

void SceneRenderer::drawHighlight(InstanceBuffer& instances, unsigned stencilBit)
{
    if (instances.isEmpty())
        return;
    // The tint marks every pixel it covers, so none is tinted twice and the outline stays outside.
    auto* gl = functions();
    gl->glDisable(GL_DEPTH_TEST);
    gl->glEnable(GL_STENCIL_TEST);
    gl->glStencilFunc(GL_NOTEQUAL, GLint(stencilBit), stencilBit);
    gl->glStencilMask(stencilBit);
    gl->glStencilOp(GL_KEEP, GL_REPLACE, GL_REPLACE);
    drawShapes(instances, m_meshFill, m_markerFill, fillOpacity, 1);
    gl->glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
    drawShapes(instances, m_meshLine, m_markerLine, 1.0f, outlineRepeats);
    gl->glDisable(GL_STENCIL_TEST);
}

void SceneRenderer::drawShapes(InstanceBuffer& instances, const Program& mesh,
                               const Program& marker, float opacity, unsigned repeats)
{
    for (const auto& [shape, program] : {std::pair(Shape::Mesh, &mesh), {Shape::Marker, &marker}}) {
        use(**program);
        (*program)->setUniformValue("opacity", opacity);
        instances.draw(shape, m_view.volume, m_meshes, repeats);
    }
}

void SceneRenderer::drawMarkers()
{
    auto* gl = functions();
    gl->glEnable(GL_DEPTH_TEST);
    gl->glDepthMask(GL_TRUE);
    use(*m_markerProgram);
    m_items.draw(Shape::Marker, m_view.volume, m_meshes);
}

} // namespace editor
