#include "scene_renderer.h"

#include "viewport_surface.h"
#include <editor/viewport/render/draw_state.h>
#include <editor/viewport/render/shader_program.h>

#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLShaderProgram>
#include <QQuickWindow>

namespace editor {

namespace {

using Shape = InstanceList::Shape;

constexpr int samplesPerPixel = 4;

} // namespace

SceneRenderer::SceneRenderer(std::shared_ptr<DrawCounts> counts) : m_counts(std::move(counts)) {}

SceneRenderer::~SceneRenderer() = default;

QOpenGLFramebufferObject* SceneRenderer::createFramebufferObject(const QSize& size)
{
    return new QOpenGLFramebufferObject(size);
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
}

void SceneRenderer::applyChanges()
{
    SceneChanges changes = std::exchange(m_changes, {});
    if (changes.touchScene()) {
        m_isSceneStale = true;
        m_outlines.invalidate();
    }
    // A scene that was left lets go of its meshes some frames later.
    const bool mayDropMeshes = changes.touchScene();
    if (changes.items)
        m_items.assign(*std::move(changes.items));
    for (const InstanceBuffer::Patch& patch : changes.patches)
        m_items.apply(patch);
    for (const InstanceList::Entry& entry : changes.additions)
        m_items.append(entry);
    if (changes.selection)
        m_outlines.setSelection(*std::move(changes.selection));
    if (changes.hover)
        m_outlines.setHover(*std::move(changes.hover));
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

    QOpenGLFramebufferObject& target = *framebufferObject();
    m_vertexArray.bind();
    if (m_isSceneStale || !m_color || m_color->size() != target.size())
        drawScene(target.size());
    m_outlines.prepare(target.size(), m_view, m_items, m_meshes);
    resetDrawState();
    QOpenGLFramebufferObject::blitFramebuffer(&target, m_color.get());
    m_outlines.draw(target, m_view, m_colors);
    m_vertexArray.release();
    m_window->resetOpenGLState();
    ++m_counts->frames;
}

void SceneRenderer::drawScene(const QSize& size)
{
    if (!m_color || m_color->size() != size) {
        QOpenGLFramebufferObjectFormat format;
        format.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
        format.setSamples(samplesPerPixel);
        m_scene = std::make_unique<QOpenGLFramebufferObject>(size, format);
        m_color = std::make_unique<QOpenGLFramebufferObject>(size);
    }
    drawTo(*m_scene);
    openGl()->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawItems();
    drawGrid();
    drawMarkers();
    QOpenGLFramebufferObject::blitFramebuffer(m_color.get(), m_scene.get());
    m_isSceneStale = false;
    ++m_counts->scenes;
}

void SceneRenderer::drawItems()
{
    auto* gl = openGl();
    gl->glEnable(GL_DEPTH_TEST);
    gl->glDepthFunc(GL_LESS);
    useProgram(*m_meshProgram, m_view);
    m_items.draw(Shape::Mesh, m_view.volume, m_meshes);
}

void SceneRenderer::drawGrid()
{
    auto* gl = openGl();
    // Colours come out of the shaders multiplied by their alpha, as Qt Quick composes them.
    gl->glEnable(GL_BLEND);
    gl->glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    gl->glDepthMask(GL_FALSE);
    gl->glDepthFunc(GL_LEQUAL);
    useProgram(*m_gridProgram, m_view);
    m_gridProgram->setUniformValue("gridCentre", m_view.gridCentre);
    m_gridProgram->setUniformValue("gridReach", m_view.gridReach);
    m_gridProgram->setUniformValue("gridStep", m_view.gridStep);
    m_gridProgram->setUniformValue("gridBlend", m_view.gridBlend);
    m_gridProgram->setUniformValue("gridColor", m_colors.grid);
    gl->glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
}

void SceneRenderer::drawMarkers()
{
    openGl()->glDepthMask(GL_TRUE);
    useProgram(*m_markerProgram, m_view);
    m_items.draw(Shape::Marker, m_view.volume, m_meshes);
}

} // namespace editor
