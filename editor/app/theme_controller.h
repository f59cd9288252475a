#pragma once

#include <QColor>
#include <QObject>
#include <QPalette>

namespace editor {

/// The colours of the whole program, dark or light. Widgets follow the application's palette,
/// QML binds to the properties.
class ThemeController final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY changed)
    Q_PROPERTY(QPalette palette READ palette NOTIFY changed)
    Q_PROPERTY(QColor pane READ pane NOTIFY changed)
    Q_PROPERTY(QColor header READ header NOTIFY changed)
    Q_PROPERTY(QColor border READ border NOTIFY changed)
    Q_PROPERTY(QColor field READ field NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor dimText READ dimText NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor warning READ warning NOTIFY changed)
    Q_PROPERTY(QColor error READ error NOTIFY changed)

public:
    /// Starts with the theme that was remembered, else dark.
    explicit ThemeController(QObject* parent = nullptr);

    bool isDark() const noexcept { return m_dark; }
    /// Switches and remembers.
    void setDark(bool dark);
    /// Switches for this run alone.
    void show(bool dark);

    QPalette palette() const;
    QColor pane() const;
    QColor header() const;
    QColor border() const;
    QColor field() const;
    QColor text() const;
    QColor dimText() const;
    QColor accent() const;
    QColor warning() const;
    QColor error() const;

Q_SIGNALS:
    void changed();

private:
    struct Colors;
    const Colors& colors() const;

    bool m_dark = true;
};

} // namespace editor
