#include "scene_renderer.h"

#include "../item_set.h"
#include "shader_program.h"
#include "viewport_surface.h"

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLShaderProgram>
#include <QQuickWindow>
#include <QVector2D>

namespace editor {

namespace {

using Shape = InstanceList::Shape;

constexpr int samplesPerPixel = 4;
constexpr float outlineWidth = 2.4f; // pixels

QOpenGLExtraFunctions* functions()
{
    return QOpenGLContext::currentContext()->extraFunctions();
}

void setColor(QOpenGLShaderProgram& program, const char* uniform, const QColor& color)
{
    program.setUniformValue(
        uniform, QVector3D(float(color.redF()), float(color.greenF()), float(color.blueF())));
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
    m_meshMaskProgram = loadProgram("mesh.vert", "mask.frag");
    m_markerMaskProgram = loadProgram("marker.vert", "mask.frag");
    m_outlineProgram = loadProgram("outline.vert", "outline.frag");
}

void SceneRenderer::applyChanges()
{
    SceneChanges changes = std::exchange(m_changes, {});
    const bool mayDropMeshes = changes.items.has_value();
    if (changes.items)
        m_items.assign(*std::move(changes.items));
    for (const InstanceBuffer::Patch& patch : changes.patches)
        m_items.apply(patch);
    if (changes.highlights)
        m_highlights.assign(*std::move(changes.highlights));
    if (changes.view)
        m_view = *changes.view;
    if (changes.colors)
        m_colors = *changes.colors;
    if (mayDropMeshes)
        m_meshes.purge();
}

void SceneRenderer::render()
{
    if (!m_meshProgram)
        loadPrograms();
    applyChanges();

    m_vertexArray.bind();
    if (!m_highlights.isEmpty())
        drawMask();
    framebufferObject()->bind();
    prepare();
    drawItems();
    drawGrid();
    if (!m_highlights.isEmpty())
        drawOutlines();
    drawMarkers();
    m_vertexArray.release();
    m_window->resetOpenGLState();
}

// A clear target and the state that all passes start from.
void SceneRenderer::prepare()
{
    auto* gl = functions();
    gl->glViewport(0, 0, framebufferObject()->width(), framebufferObject()->height());
    gl->glDisable(GL_SCISSOR_TEST);
    gl->glDisable(GL_CULL_FACE);
    gl->glDisable(GL_STENCIL_TEST);
    gl->glDisable(GL_BLEND);
    gl->glDisable(GL_DEPTH_TEST);
    gl->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    gl->glDepthMask(GL_TRUE);
    gl->glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    gl->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void SceneRenderer::use(QOpenGLShaderProgram& program)
{
    program.bind();
    program.setUniformValue("viewProjection", m_view.viewProjection);
    program.setUniformValue("eyePosition", m_view.eye);
    program.setUniformValue("viewportSize", m_view.size);
    program.setUniformValue("markerRadius", ItemSet::markerRadius);
    program.setUniformValue("markerLift", ItemSet::markerLift);
}

void SceneRenderer::drawMask()
{
    const QSize size = framebufferObject()->size();
    if (!m_mask || m_mask->size() != size)
        m_mask = std::make_unique<QOpenGLFramebufferObject>(size);
    m_mask->bind();
    prepare();

    // The greater value stays, so the order of drawing does not matter.
    auto* gl = functions();
    gl->glEnable(GL_BLEND);
    gl->glBlendEquation(GL_MAX);
    use(*m_meshMaskProgram);
    m_highlights.draw(Shape::Mesh, m_view.volume, m_meshes);
    use(*m_markerMaskProgram);
    m_highlights.draw(Shape::Marker, m_view.volume, m_meshes);
    gl->glBlendEquation(GL_FUNC_ADD);
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
    m_gridProgram->setUniformValue("gridColor", m_colors.grid);
    gl->glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
}

void SceneRenderer::drawOutlines()
{
    auto* gl = functions();
    gl->glDisable(GL_DEPTH_TEST);
    gl->glActiveTexture(GL_TEXTURE0);
    gl->glBindTexture(GL_TEXTURE_2D, m_mask->texture());
    gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);

    const QSize size = m_mask->size();
    m_outlineProgram->bind();
    m_outlineProgram->setUniformValue("mask", 0);
    m_outlineProgram->setUniformValue("maskPixel",
                                      QVector2D(1.0f / size.width(), 1.0f / size.height()));
    m_outlineProgram->setUniformValue("outlineWidth",
                                      outlineWidth * float(size.width() / m_view.size.width()));
    setColor(*m_outlineProgram, "selectionColor", m_colors.selection);
    setColor(*m_outlineProgram, "primaryColor", m_colors.primary);
    setColor(*m_outlineProgram, "hoverColor", m_colors.hover);
    gl->glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    gl->glBindTexture(GL_TEXTURE_2D, 0);
    gl->glEnable(GL_DEPTH_TEST);
}

void SceneRenderer::drawMarkers()
{
    functions()->glDepthMask(GL_TRUE);
    use(*m_markerProgram);
    m_items.draw(Shape::Marker, m_view.volume, m_meshes);
}

} // namespace editor
