#pragma once

#include <QPoint>
#include <QStringList>
#include <QWindow>

namespace test {

/// Runs a program to its end while this one keeps answering for its windows and its clipboard.
QString outputOf(const QString& program, const QStringList& arguments);

/// Keys and clicks that the display itself sends, so that they go wherever the focus really is.
class DisplayInput
{
public:
    explicit DisplayInput(QWindow* window) : m_window(window) {}

    /// Names as of `xdotool key`, with spaces between them: "ctrl+z Return".
    void press(const QString& keys) const;
    /// In pixels of the window; 1 is the left button, 3 the right one.
    void click(const QPoint& point, int button = 1) const;
    /// With the left button; `keys` are pressed before it is released.
    void drag(const QPoint& from, const QPoint& to, const QString& keys = {}) const;

private:
    QStringList moveTo(const QPoint& point) const;

    QWindow* m_window;
};

} // namespace test
