#pragma once

#include <QPointF>
#include <QRectF>
#include <Qt>

#include <optional>

namespace editor {

/// Tells from a pressed button and its way across the screen what the user means to do.
///
/// | drag                | means       |
/// |---------------------|-------------|
/// | left                | rubber band |
/// | Alt + left          | orbit       |
/// | middle              | orbit       |
/// | Shift or Alt + middle | pan       |
/// | right               | look around |
/// | Alt + right         | zoom        |
///
/// A button released where it was pressed is a click.
class PointerGesture
{
public:
    enum class Kind
    {
        None,
        Click,
        RubberBand,
        Orbit,
        Look,
        Pan,
        Zoom
    };

    /// What a click would turn into when the pointer moves on.
    static Kind dragOf(Qt::MouseButton button, Qt::KeyboardModifiers modifiers);

    bool isActive() const { return m_kind != Kind::None; }
    Kind kind() const { return m_kind; }
    Qt::MouseButton button() const { return m_button; }
    QPointF start() const { return m_start; }
    QRectF rectangle() const { return QRectF(m_start, m_position).normalized(); }

    void press(const QPointF& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    /// Returns how far the pointer came since the last move; zero while it may still be a click.
    QPointF move(const QPointF& position);
    /// Makes what may still be a click a drag.
    void begin()
    {
        if (m_kind == Kind::Click)
            m_kind = m_drag;
    }
    /// Ends the gesture and returns what it was.
    Kind release();

private:
    static constexpr double dragThreshold = 4.0;

    Kind m_kind = Kind::None;
    Kind m_drag = Kind::None;
    Qt::MouseButton m_button = Qt::NoButton;
    QPointF m_start;
    QPointF m_position;
};

} // namespace editor
