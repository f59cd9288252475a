#include "theme_controller.h"

#include <QApplication>
#include <QSettings>

namespace editor {

struct ThemeController::Colors
{
    QColor window, pane, header, border, field, button;
    QColor text, dimText, disabledText, accent, accentText, link, warning, error;
};

static const auto settingsKey = QStringLiteral("theme/dark");

ThemeController::ThemeController(QObject* parent) : QObject(parent)
{
    show(QSettings().value(settingsKey, true).toBool());
}

void ThemeController::setDark(bool dark)
{
    QSettings().setValue(settingsKey, dark);
    show(dark);
}

void ThemeController::show(bool dark)
{
    m_dark = dark;
    QApplication::setPalette(palette());
    Q_EMIT changed();
}

const ThemeController::Colors& ThemeController::colors() const
{
    static const Colors dark{"#2b2d31", "#232529", "#303338", "#17181b", "#1b1d20",
                             "#3b3e44", "#d9dce1", "#9ca2ab", "#666b73", "#3a73b8",
                             "#ffffff", "#6fa8e8", "#e0a83c", "#ec7a71"};
    static const Colors light{"#eceef0", "#f8f9fa", "#e3e6e9", "#c3c8ce", "#ffffff",
                              "#e6e8eb", "#22262b", "#5b636c", "#a0a6ad", "#2f72c4",
                              "#ffffff", "#1f62b4", "#8a5700", "#b3342a"};
    return m_dark ? dark : light;
}

QPalette ThemeController::palette() const
{
    const Colors& c = colors();
    QPalette palette(c.button, c.window);
    palette.setColor(QPalette::WindowText, c.text);
    palette.setColor(QPalette::Base, c.pane);
    palette.setColor(QPalette::AlternateBase, c.header);
    palette.setColor(QPalette::Text, c.text);
    palette.setColor(QPalette::ButtonText, c.text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, c.accent);
    palette.setColor(QPalette::HighlightedText, c.accentText);
    palette.setColor(QPalette::Link, c.link);
    palette.setColor(QPalette::LinkVisited, c.link);
    palette.setColor(QPalette::ToolTipBase, c.header);
    palette.setColor(QPalette::ToolTipText, c.text);
    palette.setColor(QPalette::PlaceholderText, c.dimText);
    palette.setColor(QPalette::Mid, c.border);
    palette.setColor(QPalette::Dark, c.border);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, c.disabledText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, c.border);
    return palette;
}

QColor ThemeController::pane() const
{
    return colors().pane;
}

QColor ThemeController::header() const
{
    return colors().header;
}

QColor ThemeController::border() const
{
    return colors().border;
}

QColor ThemeController::field() const
{
    return colors().field;
}

QColor ThemeController::text() const
{
    return colors().text;
}

QColor ThemeController::dimText() const
{
    return colors().dimText;
}

QColor ThemeController::accent() const
{
    return colors().accent;
}

QColor ThemeController::warning() const
{
    return colors().warning;
}

QColor ThemeController::error() const
{
    return colors().error;
}

} // namespace editor
