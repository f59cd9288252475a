#pragma once

#include <editor/viewport/gizmo/gizmo_types.h>

#include <QColor>
#include <QQuickPaintedItem>

namespace editor {

/// The sign of a gizmo's tool, 16 units wide.
class ToolIcon : public QQuickPaintedItem
{
    Q_OBJECT
    Q_PROPERTY(editor::Gizmo::Tool tool MEMBER m_tool NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)

public:
    explicit ToolIcon(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    Gizmo::Tool m_tool = Gizmo::Tool::None;
    QColor m_color = Qt::gray;
};

} // namespace editor
