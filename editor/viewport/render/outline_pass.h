#pragma once

#include <editor/viewport/render/mesh_cache.h>
#include <editor/viewport/render/scene_changes.h>

class QOpenGLFramebufferObject;
class QOpenGLShaderProgram;

namespace editor {

/// Outlines what is selected and hovered. The silhouettes go into a mask, whose channels stay
/// apart: another hover redraws one of them. Needs a current context throughout.
class OutlinePass
{
public:
    OutlinePass();
    ~OutlinePass();

    void setSelection(SelectionMarks&& marks);
    void setHover(HoverMarks&& marks);
    /// The camera or the items are other ones.
    void invalidate() { m_stale = Mask::Everything; }

    /// Redraws what is stale of a mask of that size. `items` are those that hover marks name.
    void prepare(const QSize& size, const SceneView& view, InstanceBuffer& items,
                 MeshCache& meshes);
    /// Lays the outlines over a target that has the mask's size.
    void draw(QOpenGLFramebufferObject& target, const SceneView& view, const SceneColors& colors);

private:
    using Program = std::unique_ptr<QOpenGLShaderProgram>;
    using Shape = InstanceList::Shape;
    enum class Mask
    {
        Fresh,
        Hover,
        Everything
    };

    bool isEmpty() const { return m_selected.isEmpty() && m_hover.isEmpty(); }
    void use(QOpenGLShaderProgram& program, const SceneView& view, const QVector4D& channels,
             const ItemRange& branch);
    void drawSelection(const SceneView& view, MeshCache& meshes);
    void drawHover(const SceneView& view, InstanceBuffer& items, MeshCache& meshes);

    InstanceBuffer m_selected;
    ItemRange m_primary;
    HoverMarks m_hover;
    Box m_bounds; // of all that is marked
    Mask m_stale = Mask::Everything;

    std::unique_ptr<QOpenGLFramebufferObject> m_mask;
    Program m_meshProgram;
    Program m_markerProgram;
    Program m_outlineProgram;
};

} // namespace editor
