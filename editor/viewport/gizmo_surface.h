#pragma once

#include <editor/viewport/viewport_controller.h>

#include <QPointer>
#include <QQuickPaintedItem>

namespace editor {

/// Paints the gizmo of a ViewportController. Its parent has the view's size; it covers only the
/// surroundings of the gizmo, so that a moving camera costs a small picture.
class GizmoSurface : public QQuickPaintedItem
{
    Q_OBJECT
    Q_PROPERTY(editor::ViewportController* controller READ controller WRITE setController NOTIFY
                   controllerChanged)

public:
    explicit GizmoSurface(QQuickItem* parent = nullptr);

    ViewportController* controller() const { return m_controller; }
    void setController(ViewportController* controller);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void controllerChanged();

protected:
    void updatePolish() override;

private:
    void paintShape(QPainter& painter, const GizmoLayout::Shape& shape) const;

    QPointer<ViewportController> m_controller;
    GizmoLayout m_layout; // as it is to be painted
    GizmoHandle m_active;
    bool m_isDragging = false;
    bool m_isFixed = false;
};

} // namespace editor
