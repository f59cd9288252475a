#include "tool_icon.h"

#include <QPainter>

namespace editor {

namespace {

constexpr double side = 16;

void paintPointer(QPainter& painter)
{
    painter.drawPolygon(QPolygonF(
        {{4, 2}, {4, 12.5}, {6.9, 9.9}, {8.9, 14}, {10.6, 13.2}, {8.7, 9.3}, {12.4, 9.1}}));
}

void paintArrows(QPainter& painter)
{
    for (int i = 0; i < 4; ++i) {
        painter.drawLine(QPointF(8, 8), QPointF(8, 2.2));
        painter.drawPolyline(QPolygonF({{6, 4.2}, {8, 2}, {10, 4.2}}));
        painter.translate(8, 8);
        painter.rotate(90);
        painter.translate(-8, -8);
    }
}

void paintTurn(QPainter& painter)
{
    constexpr int full = 16 * 360; // QPainter counts sixteenths of a degree
    painter.drawArc(QRectF(2.8, 2.8, 10.4, 10.4), 16 * 65, full - 16 * 75);
    painter.drawPolyline(QPolygonF({{7.4, 1}, {10.2, 3.3}, {7.6, 5.8}}));
}

void paintSizes(QPainter& painter)
{
    painter.drawRect(QRectF(2.5, 8.5, 5, 5));
    painter.drawLine(QPointF(8.5, 7.5), QPointF(13, 3));
    painter.drawPolyline(QPolygonF({{9.8, 2.6}, {13.4, 2.6}, {13.4, 6.2}}));
}

} // namespace

ToolIcon::ToolIcon(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setSize({side, side});
    setAntialiasing(true);
    connect(this, &ToolIcon::changed, this, [this] { update(); });
}

void ToolIcon::paint(QPainter* painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->scale(width() / side, height() / side);
    painter->setPen(QPen(m_color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (m_tool) {
    case Gizmo::Tool::None:
        paintPointer(*painter);
        break;
    case Gizmo::Tool::Move:
        paintArrows(*painter);
        break;
    case Gizmo::Tool::Rotate:
        paintTurn(*painter);
        break;
    case Gizmo::Tool::Scale:
        paintSizes(*painter);
        break;
    }
}

} // namespace editor
