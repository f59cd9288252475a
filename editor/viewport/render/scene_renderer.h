#pragma once

#include "mesh_cache.h"
#include "scene_changes.h"

#include <QOpenGLVertexArrayObject>
#include <QQuickFramebufferObject>

class QOpenGLShaderProgram;
class QQuickWindow;

namespace editor {

/// Draws a ViewportSurface. Lives on Qt Quick's render thread with its context current; meets the
/// surface in synchronize() alone, while the GUI thread waits.
class SceneRenderer : public QQuickFramebufferObject::Renderer
{
public:
    SceneRenderer();
    ~SceneRenderer() override;

protected:
    QOpenGLFramebufferObject* createFramebufferObject(const QSize& size) override;
    void synchronize(QQuickFramebufferObject* item) override;
    void render() override;

private:
    using Program = std::unique_ptr<QOpenGLShaderProgram>;

    void loadPrograms();
    void applyChanges();
    void prepare();
    void use(QOpenGLShaderProgram& program);
    /// Draws the silhouettes of what is highlighted into the mask.
    void drawMask();
    void drawItems();
    void drawGrid();
    void drawOutlines();
    void drawMarkers();

    SceneChanges m_changes;
    SceneView m_view;
    SceneColors m_colors;
    QQuickWindow* m_window = nullptr;
    bool m_isNew = true;

    QOpenGLVertexArrayObject m_vertexArray;
    std::unique_ptr<QOpenGLFramebufferObject> m_mask;
    MeshCache m_meshes;
    InstanceBuffer m_items;
    InstanceBuffer m_highlights;
    Program m_meshProgram;
    Program m_markerProgram;
    Program m_gridProgram;
    Program m_meshMaskProgram;
    Program m_markerMaskProgram;
    Program m_outlineProgram;
};

} // namespace editor
