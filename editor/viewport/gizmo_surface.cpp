#include "gizmo_surface.h"

#include <QPainter>

namespace editor {

namespace {

constexpr double margin = 8;
constexpr double lineWidth = 2.5;
constexpr double activeLineWidth = 3.5;
constexpr double fillOpacity = 0.35;

const QColor axisColors[] = {QColor(0xe0474c), QColor(0x6cad3a), QColor(0x4a86e8)};
const QColor viewColor(0xc8ccd2);
const QColor activeColor(0xffd84d);
const QColor fixedColor(0x8a8f98);
const QColor edgeColor(0, 0, 0, 110);

} // namespace

GizmoSurface::GizmoSurface(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    const double side = 2 * (GizmoLayout::reach + margin);
    setSize({side, side});
}

void GizmoSurface::setController(ViewportController* controller)
{
    if (controller == m_controller)
        return;
    if (m_controller) {
        m_controller->disconnect(this);
        m_controller->gizmo()->disconnect(this);
    }
    m_controller = controller;
    if (m_controller) {
        connect(m_controller, &ViewportController::cameraChanged, this, &QQuickItem::polish);
        connect(m_controller->gizmo(), &GizmoController::looksChanged, this, &QQuickItem::polish);
    }
    polish();
    Q_EMIT controllerChanged();
}

void GizmoSurface::updatePolish()
{
    m_layout = m_controller ? m_controller->gizmo()->layout() : GizmoLayout();
    setVisible(!m_layout.isEmpty());
    if (m_layout.isEmpty())
        return;
    const GizmoController& gizmo = *m_controller->gizmo();
    m_active = gizmo.activeHandle();
    m_isDragging = gizmo.isDragging();
    m_isFixed = gizmo.isFixed();
    setPosition(m_layout.centre() - QPointF(width(), height()) / 2);
    update();
}

void GizmoSurface::paint(QPainter* painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(QPointF(width(), height()) / 2 - m_layout.centre());
    for (const GizmoLayout::Shape& shape : m_layout.shapes()) {
        if (!m_isDragging || shape.handle == m_active)
            paintShape(*painter, shape);
    }
}

void GizmoSurface::paintShape(QPainter& painter, const GizmoLayout::Shape& shape) const
{
    using Part = GizmoHandle::Part;
    const bool isActive = shape.handle == m_active;
    QColor color = shape.handle.part == Part::View ? viewColor : axisColors[shape.handle.axis];
    if (m_isFixed)
        color = fixedColor;
    else if (isActive)
        color = activeColor;

    const double width = isActive ? activeLineWidth : lineWidth;
    if (!shape.isFilled) {
        for (const auto& [tone, extra] : {std::pair(edgeColor, 1.5), {color, 0.0}}) {
            painter.setPen(QPen(tone, width + extra, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPolyline(shape.points);
        }
        return;
    }
    QColor inside = color;
    if (shape.handle.part != Part::Axis)
        inside.setAlphaF(isActive ? 2 * fillOpacity : fillOpacity);
    painter.setPen(QPen(shape.handle.part == Part::Axis ? edgeColor : color, 1.2));
    painter.setBrush(inside);
    painter.drawPolygon(shape.points);
}

} // namespace editor
