#include "pointer_gesture.h"

#include <QLineF>

namespace editor {

PointerGesture::Kind PointerGesture::dragOf(Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    const bool alt = modifiers.testFlag(Qt::AltModifier);
    if (button == Qt::LeftButton)
        return alt ? Kind::Orbit : Kind::RubberBand;
    if (button == Qt::RightButton)
        return alt ? Kind::Zoom : Kind::Look;
    return alt || modifiers.testFlag(Qt::ShiftModifier) ? Kind::Pan : Kind::Orbit;
}

void PointerGesture::press(const QPointF& position, Qt::MouseButton button,
                           Qt::KeyboardModifiers modifiers)
{
    m_kind = Kind::Click;
    m_drag = dragOf(button, modifiers);
    m_button = button;
    m_start = m_position = position;
}

QPointF PointerGesture::move(const QPointF& position)
{
    if (m_kind == Kind::Click && QLineF(m_start, position).length() > dragThreshold)
        m_kind = m_drag;
    if (m_kind == Kind::None || m_kind == Kind::Click)
        return {};
    const QPointF way = position - m_position;
    m_position = position;
    return way;
}

PointerGesture::Kind PointerGesture::release()
{
    const Kind kind = m_kind;
    m_kind = Kind::None;
    return kind;
}

} // namespace editor
