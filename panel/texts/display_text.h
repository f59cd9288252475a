#pragma once

#include <panel/kyr_scene_outline_panel_export.h>

#include <QObject>
#include <QString>

namespace kyr::panel {

/// Makes texts from a scene fit to show: they may hold anything, and stay within their place.
///
/// Texts are for items with `Text.PlainText`; markup in them is not looked at. Stateless; a text
/// that needs no change is returned as it is, without a copy.
class KYR_SCENE_OUTLINE_PANEL_EXPORT DisplayText : public QObject
{
    Q_OBJECT

public:
    static constexpr int longestLine = 400;
    static constexpr int longestExcerpt = 1000;
    static constexpr int mostLines = 12;
    static constexpr int mostMarks = 3;

    using QObject::QObject;

    /// One line: line breaks become "↵", tabs a space, other control characters "�". More combining
    /// marks on one letter than any script needs are left out, and so is what no window is wide
    /// enough for.
    Q_INVOKABLE static QString oneLine(const QString& text);
    /// A few lines, for a tool tip or a dialog.
    Q_INVOKABLE static QString excerpt(const QString& text);
    /// Whether glyphs may reach out of the line's height: anything but Latin letters.
    Q_INVOKABLE static bool mayReachOut(const QString& text);
};

} // namespace kyr::panel
