import QtQuick 2.15

// Colours and sizes of the panel, from the application's palette. Every value can be set, so that an
// editor with a look of its own gives the panel that look: `style: PanelStyle { base: "#202326" }`.
QtObject {
    id: style

    property SystemPalette palette: SystemPalette {}

    property color base: palette.base
    property color window: palette.window
    property color text: palette.text
    property color highlight: palette.highlight
    readonly property bool dark: base.hslLightness < 0.5

    property color dimText: blend(text, base, 0.35)
    property color faintText: blend(text, base, 0.55)
    property color alternateBase: blend(base, text, dark ? 0.025 : 0.03)
    property color header: blend(window, text, dark ? 0.03 : 0.02)
    property color separator: blend(window, text, dark ? 0.12 : 0.18)
    property color guide: blend(base, text, 0.16)
    property color hover: alpha(text, dark ? 0.07 : 0.06)
    property color selection: blend(base, highlight, dark ? 0.5 : 0.3)
    property color selectionUnfocused: blend(base, highlight, dark ? 0.28 : 0.16)
    property color highlightedText: highlight.hslLightness < 0.65 ? "white" : "black"
    property color focus: dark ? Qt.lighter(highlight, 1.35) : highlight
    property color error: dark ? "#e5716c" : "#b3261e"
    property color modified: dark ? "#e0a846" : "#b06f00"

    property int rowHeight: 22
    property int headerHeight: 24
    property int indentation: 14
    property int iconSize: 16
    property int spacing: 4
    property int buttonWidth: 20
    property int countWidth: 44
    property int minimumNameWidth: 110
    property int usualNameWidth: 200
    property int controlHeight: 24
    property int pixelSize: 12
    property int toolTipDelay: 500

    // A hue of their own lets types be told apart at a glance; all else stays neutral.
    property var typeHues: ({ "mesh": 0.52, "light": 0.13, "camera": 0.60, "bone": 0.08,
                              "material": 0.90 })

    function typeColor(type) {
        const hue = typeHues[type];
        return hue === undefined ? blend(text, base, 0.3)
                                 : Qt.hsla(hue, dark ? 0.42 : 0.6, dark ? 0.66 : 0.36, 1);
    }
    function blend(from, to, amount) {
        return Qt.rgba(from.r + (to.r - from.r) * amount, from.g + (to.g - from.g) * amount,
                       from.b + (to.b - from.b) * amount, 1);
    }
    function alpha(color, opacity) {
        return Qt.rgba(color.r, color.g, color.b, opacity);
    }
}
