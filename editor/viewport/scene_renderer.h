#pragma once

#include <editor/viewport/render/draw_counts.h>
#include <editor/viewport/render/outline_pass.h>

#include <QOpenGLVertexArrayObject>
#include <QQuickFramebufferObject>

class QQuickWindow;

namespace editor {

/// Draws a ViewportSurface. Lives on Qt Quick's render thread with its context current; meets the
/// surface in synchronize() alone, while the GUI thread waits.
///
/// The drawn scene is kept: a frame in which only marks changed puts outlines over the same
/// picture.
class SceneRenderer : public QQuickFramebufferObject::Renderer
{
public:
    explicit SceneRenderer(std::shared_ptr<DrawCounts> counts);
    ~SceneRenderer() override;

protected:
    QOpenGLFramebufferObject* createFramebufferObject(const QSize& size) override;
    void synchronize(QQuickFramebufferObject* item) override;
    void render() override;

private:
    using Program = std::unique_ptr<QOpenGLShaderProgram>;
    using Target = std::unique_ptr<QOpenGLFramebufferObject>;

    void loadPrograms();
    void applyChanges();
    void drawScene(const QSize& size);
    void drawItems();
    void drawGrid();
    void drawMarkers();

    std::shared_ptr<DrawCounts> m_counts;
    SceneChanges m_changes;
    SceneView m_view;
    SceneColors m_colors;
    QQuickWindow* m_window = nullptr;
    bool m_isNew = true;
    bool m_isSceneStale = true;

    QOpenGLVertexArrayObject m_vertexArray;
    Target m_scene; // colour and depth, several samples a pixel
    Target m_color; // the same, one sample a pixel
    MeshCache m_meshes;
    InstanceBuffer m_items;
    OutlinePass m_outlines;
    Program m_meshProgram;
    Program m_markerProgram;
    Program m_gridProgram;
};

} // namespace editor
