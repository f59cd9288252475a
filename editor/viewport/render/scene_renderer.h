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
    void use(QOpenGLShaderProgram& program);
    void drawItems();
    void drawGrid();
    void drawHighlight(InstanceBuffer& instances, unsigned stencilBit);
    void drawMarkers();
    void drawShapes(InstanceBuffer& instances, const Program& mesh, const Program& marker,
                    float opacity, unsigned repeats);

    SceneChanges m_changes;
    SceneView m_view;
    QColor m_gridColor;
    QQuickWindow* m_window = nullptr;
    bool m_isNew = true;

    QOpenGLVertexArrayObject m_vertexArray;
    MeshCache m_meshes;
    InstanceBuffer m_items;
    InstanceBuffer m_selection;
    InstanceBuffer m_hover;
    Program m_meshProgram;
    Program m_markerProgram;
    Program m_gridProgram;
    Program m_meshFill;
    Program m_meshLine;
    Program m_markerFill;
    Program m_markerLine;
};

} // namespace editor
