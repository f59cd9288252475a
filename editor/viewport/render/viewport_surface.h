#pragma once

#include "../viewport_controller.h"
#include "scene_changes.h"

#include <QColor>
#include <QPointer>
#include <QQuickFramebufferObject>

namespace editor {

/// The item that draws what a ViewportController holds, on a transparent background. Draws only
/// after a change, so a view at rest costs nothing.
class ViewportSurface : public QQuickFramebufferObject
{
    Q_OBJECT
    Q_PROPERTY(editor::ViewportController* controller READ controller WRITE setController NOTIFY
                   controllerChanged)
    Q_PROPERTY(QColor selectionColor MEMBER m_selectionColor NOTIFY highlightColorsChanged)
    Q_PROPERTY(QColor primaryColor MEMBER m_primaryColor NOTIFY highlightColorsChanged)
    Q_PROPERTY(QColor hoverColor MEMBER m_hoverColor NOTIFY highlightColorsChanged)
    Q_PROPERTY(QColor gridColor MEMBER m_gridColor NOTIFY gridColorChanged)

public:
    explicit ViewportSurface(QQuickItem* parent = nullptr);

    ViewportController* controller() const { return m_controller; }
    void setController(ViewportController* controller);

    Renderer* createRenderer() const override;

    /// @name For the renderer, while the GUI thread waits
    /// @{
    SceneChanges takeChanges();
    void forgetDrawn() { m_changes = Everything; }
    /// @}

Q_SIGNALS:
    void controllerChanged();
    void highlightColorsChanged();
    void gridColorChanged();

private:
    enum Change
    {
        View = 1,
        Items = 2,
        Selection = 4,
        Hover = 8,
        Grid = 16,
        Everything = 31
    };
    static constexpr quint32 noSlot = ~quint32(0);

    void schedule(int changes);
    void patchItem(quint32 index);
    InstanceList listItems();
    InstanceList listSelection() const;
    InstanceList listHover() const;
    /// What to draw for an item; null for a group.
    const MeshGeometryPtr& meshOf(const ViewportItem& item) const;
    bool isDrawn(const ViewportItem& item) const { return item.visible && meshOf(item); }
    InstanceList::Entry entryOf(const ViewportItem& item, const QColor& color) const;

    QPointer<ViewportController> m_controller;
    int m_changes = Everything;
    std::vector<InstanceBuffer::Patch> m_patches;
    std::vector<quint32> m_slots;                   // by item
    std::vector<const MeshGeometry*> m_drawnMeshes; // by item

    MeshGeometryPtr m_lightSign;
    MeshGeometryPtr m_cameraSign;
    QColor m_selectionColor = QColor(0xff8c1a);
    QColor m_primaryColor = QColor(0xffd84d);
    QColor m_hoverColor = QColor(0x59c8ff);
    QColor m_gridColor = QColor(128, 128, 128, 110);
};

} // namespace editor
