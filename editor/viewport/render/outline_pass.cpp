#include "outline_pass.h"

#include "draw_state.h"
#include "shader_program.h"

#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLShaderProgram>
#include <QVector2D>

namespace editor {

namespace {

constexpr float outlineWidth = 2.4f; // pixels
constexpr ItemRange allItems{0, ~quint32(0)};

// Channels of the mask.
const QVector4D selected(1, 0, 0, 0);
const QVector4D selectedAndPrimary(1, 1, 0, 0);
const QVector4D hovered(0, 0, 1, 0);

void setColor(QOpenGLShaderProgram& program, const char* uniform, const QColor& color)
{
    program.setUniformValue(
        uniform, QVector3D(float(color.redF()), float(color.greenF()), float(color.blueF())));
}

} // namespace

OutlinePass::OutlinePass() = default;
OutlinePass::~OutlinePass() = default;

void OutlinePass::setSelection(SelectionMarks&& marks)
{
    m_selected.assign(std::move(marks.items));
    m_primary = marks.primary;
    m_stale = Mask::Everything;
}

void OutlinePass::setHover(HoverMarks&& marks)
{
    m_hover = std::move(marks);
    m_stale = std::max(m_stale, Mask::Hover);
}

void OutlinePass::prepare(const QSize& size, const SceneView& view, InstanceBuffer& items,
                          MeshCache& meshes)
{
    if (!m_outlineProgram) {
        m_meshProgram = loadProgram("mesh_mask.vert", "mask.frag");
        m_markerProgram = loadProgram("marker_mask.vert", "mask.frag");
        m_outlineProgram = loadProgram("outline.vert", "outline.frag");
    }
    if (isEmpty()) {
        m_stale = Mask::Everything;
        return;
    }
    if (!m_mask || m_mask->size() != size) {
        m_mask = std::make_unique<QOpenGLFramebufferObject>(size);
        m_stale = Mask::Everything;
    }
    if (m_stale == Mask::Fresh)
        return;

    drawTo(*m_mask);
    auto* gl = openGl();
    const GLboolean all = m_stale == Mask::Everything;
    gl->glColorMask(all, all, GL_TRUE, GL_FALSE);
    gl->glClear(GL_COLOR_BUFFER_BIT);
    // The greater value stays, so the order of drawing does not matter.
    gl->glEnable(GL_BLEND);
    gl->glBlendEquation(GL_MAX);
    if (all)
        drawSelection(view, meshes);
    drawHover(view, items, meshes);
    gl->glBlendEquation(GL_FUNC_ADD);

    m_bounds = m_selected.boundsOf(allItems);
    m_bounds.include(m_hover.slotBounds);
    for (const ItemRange& branch : m_hover.branches)
        m_bounds.include(items.boundsOf(branch));
    m_stale = Mask::Fresh;
}

void OutlinePass::use(QOpenGLShaderProgram& program, const SceneView& view,
                      const QVector4D& channels, const ItemRange& branch)
{
    useProgram(program, view);
    program.setUniformValue("channels", channels);
    program.setUniformValue("branch", QVector2D(float(branch.first), float(branch.end)));
}

void OutlinePass::drawSelection(const SceneView& view, MeshCache& meshes)
{
    use(*m_meshProgram, view, selected, allItems);
    m_selected.draw(Shape::Mesh, view.volume, meshes);
    use(*m_meshProgram, view, selectedAndPrimary, m_primary);
    m_selected.draw(Shape::Mesh, view.volume, meshes, m_primary);
    use(*m_markerProgram, view, selected, allItems);
    m_selected.draw(Shape::Marker, view.volume, meshes);
    use(*m_markerProgram, view, selectedAndPrimary, m_primary);
    m_selected.draw(Shape::Marker, view.volume, meshes, m_primary);
}

void OutlinePass::drawHover(const SceneView& view, InstanceBuffer& items, MeshCache& meshes)
{
    const auto drawShape = [&](QOpenGLShaderProgram& program, Shape shape) {
        use(program, view, hovered, allItems);
        for (quint32 slot : m_hover.slots)
            items.drawSlot(slot, shape, meshes);
        for (const ItemRange& branch : m_hover.branches) {
            use(program, view, hovered, branch);
            items.draw(shape, view.volume, meshes, branch);
        }
    };
    drawShape(*m_meshProgram, Shape::Mesh);
    drawShape(*m_markerProgram, Shape::Marker);
}

void OutlinePass::draw(QOpenGLFramebufferObject& target, const SceneView& view,
                       const SceneColors& colors)
{
    const QSize size = target.size();
    const QRect covered = isEmpty() ? QRect() : pixelsOf(m_bounds, view, size);
    if (covered.isEmpty())
        return;
    drawTo(target);
    auto* gl = openGl();
    gl->glEnable(GL_SCISSOR_TEST);
    gl->glScissor(covered.x(), covered.y(), covered.width(), covered.height());
    gl->glEnable(GL_BLEND);
    gl->glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    gl->glActiveTexture(GL_TEXTURE0);
    gl->glBindTexture(GL_TEXTURE_2D, m_mask->texture());
    gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);

    m_outlineProgram->bind();
    m_outlineProgram->setUniformValue("mask", 0);
    m_outlineProgram->setUniformValue("maskPixel",
                                      QVector2D(1.0f / size.width(), 1.0f / size.height()));
    m_outlineProgram->setUniformValue("outlineWidth",
                                      outlineWidth * float(size.width() / view.size.width()));
    setColor(*m_outlineProgram, "selectionColor", colors.selection);
    setColor(*m_outlineProgram, "primaryColor", colors.primary);
    setColor(*m_outlineProgram, "hoverColor", colors.hover);
    gl->glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    gl->glBindTexture(GL_TEXTURE_2D, 0);
    gl->glDisable(GL_SCISSOR_TEST);
}

} // namespace editor
