#pragma once

#include <editor/viewport/render/draw_counts.h>
#include <editor/viewport/render/scene_changes.h>
#include <editor/viewport/viewport_controller.h>

#include <QColor>
#include <QPointer>
#include <QQuickFramebufferObject>

namespace editor {

/// The item that draws what a ViewportController holds, on a transparent background. Draws only
/// after a change, so a view at rest costs nothing, and draws the items only when they or the
/// camera changed.
class ViewportSurface : public QQuickFramebufferObject
{
    Q_OBJECT
    Q_PROPERTY(editor::ViewportController* controller READ controller WRITE setController NOTIFY
                   controllerChanged)
    Q_PROPERTY(
        QColor selectionColor READ selectionColor WRITE setSelectionColor NOTIFY colorsChanged)
    Q_PROPERTY(QColor primaryColor READ primaryColor WRITE setPrimaryColor NOTIFY colorsChanged)
    Q_PROPERTY(QColor hoverColor READ hoverColor WRITE setHoverColor NOTIFY colorsChanged)
    Q_PROPERTY(QColor gridColor READ gridColor WRITE setGridColor NOTIFY colorsChanged)

public:
    explicit ViewportSurface(QQuickItem* parent = nullptr);

    ViewportController* controller() const { return m_controller; }
    void setController(ViewportController* controller);

    QColor selectionColor() const { return m_colors.selection; }
    void setSelectionColor(const QColor& color) { setColor(m_colors.selection, color); }
    QColor primaryColor() const { return m_colors.primary; }
    void setPrimaryColor(const QColor& color) { setColor(m_colors.primary, color); }
    QColor hoverColor() const { return m_colors.hover; }
    void setHoverColor(const QColor& color) { setColor(m_colors.hover, color); }
    QColor gridColor() const { return m_colors.grid; }
    void setGridColor(const QColor& color) { setColor(m_colors.grid, color); }

    const DrawCounts& drawCounts() const { return *m_counts; }

    Renderer* createRenderer() const override;

    /// @name For the renderer, while the GUI thread waits
    /// @{
    SceneChanges takeChanges();
    void forgetDrawn() { m_changes = Everything; }
    /// @}

Q_SIGNALS:
    void controllerChanged();
    void colorsChanged();

private:
    enum Change
    {
        View = 1,
        Items = 2,
        Selection = 4,
        Hover = 8,
        Colors = 16,
        Everything = 31
    };
    static constexpr quint32 noSlot = DrawList::noSlot;
    /// Branches with no more items than this are hovered item by item.
    static constexpr quint32 smallBranch = 16;

    void schedule(int changes);
    void setColor(QColor& color, const QColor& value);
    void patchItem(quint32 index);
    void addItems(const std::vector<quint32>& indices);
    void removeItems(const std::vector<quint32>& indices);
    void patch(quint32 slot, const Instance& instance, const Box& bounds);
    InstanceList listItems();
    SelectionMarks listSelection() const;
    HoverMarks listHover() const;

    QPointer<ViewportController> m_controller;
    std::shared_ptr<DrawCounts> m_counts = std::make_shared<DrawCounts>();
    int m_changes = Everything;
    std::vector<InstanceBuffer::Patch> m_patches;
    std::vector<InstanceList::Entry> m_additions;
    quint32 m_slotCount = 0;                        // slots given away
    quint32 m_listedCount = 0;                      // of them, those of the list
    std::vector<quint32> m_slots;                   // by item
    std::vector<const MeshGeometry*> m_drawnMeshes; // by item

    SceneColors m_colors{0xff8c1a, 0xffd84d, 0x59c8ff, QColor(128, 128, 128, 110)};
};

} // namespace editor
