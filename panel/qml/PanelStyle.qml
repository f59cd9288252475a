import QtQuick 2.15

// Colours and sizes of the panel, from the application's palette and font. Every value can be set, so
// that an editor with a look of its own gives the panel that look: `style: PanelStyle { base: "#202326" }`.
//
// Texts have a contrast of at least 4.5 to what is behind them and icons one of 3, also in rows that
// are selected, dimmed or under the pointer: colours that come too close are moved away.
QtObject {
    id: style

    property SystemPalette palette: SystemPalette {}

    property color base: palette.base
    property color window: palette.window
    property color text: legible(palette.text, surface, textContrast)
    property color highlight: palette.highlight
    readonly property bool dark: luminance(base) < 0.18

    readonly property real textContrast: 4.5
    readonly property real iconContrast: 3

    property color dimText: legible(blend(text, base, 0.3), surface, textContrast)
    property color faintText: legible(blend(text, base, 0.5), surface, textContrast)
    property color faintIcon: legible(blend(text, base, 0.65), surface, iconContrast)
    property color alternateBase: blend(base, palette.text, dark ? 0.025 : 0.03)
    property color header: blend(window, palette.text, dark ? 0.03 : 0.02)
    property color separator: blend(window, palette.text, dark ? 0.12 : 0.18)
    property color guide: blend(base, palette.text, 0.16)
    property color hover: alpha(palette.text, dark ? 0.07 : 0.06)
    property color selection: highlighted(dark ? 0.5 : 0.3)
    property color selectionUnfocused: highlighted(dark ? 0.28 : 0.16)
    property color highlightedText: contrast("white", highlight) > contrast("black", highlight)
                                    ? "white" : "black"
    property color focus: legible(dark ? Qt.lighter(highlight, 1.35) : highlight, surface, iconContrast)
    property color error: legible(dark ? "#e5716c" : "#b3261e", surface, textContrast)
    property color modified: legible(dark ? "#e0a846" : "#b06f00", surface, iconContrast)

    // What texts and icons of a row take, with the background that they are hardest to read on.
    readonly property color surface: hardest([base, alternateBase, window, header, over(base),
                                              over(alternateBase), over(header)])
    readonly property color selectedSurface: hardest([selection, selectionUnfocused, over(selection),
                                                      over(selectionUnfocused)])
    readonly property var rowTones: ({ surface: surface, text: text, dim: dimText, faint: faintText,
                                       faintIcon: faintIcon, modified: modified })
    readonly property var selectedTones: ({
        surface: selectedSurface,
        text: legible(text, selectedSurface, textContrast),
        dim: legible(dimText, selectedSurface, textContrast),
        faint: legible(faintText, selectedSurface, textContrast),
        faintIcon: legible(faintIcon, selectedSurface, iconContrast),
        modified: legible(modified, selectedSurface, iconContrast)
    })

    property int pixelSize: systemText.fontInfo.pixelSize
    property int rowHeight: lineHeight + 8
    property int headerHeight: lineHeight + 10
    property int controlHeight: lineHeight + 10
    property int indentation: 14
    property int iconSize: 16
    property int spacing: 4
    property int buttonWidth: 20
    property int countWidth: 44
    property int minimumNameWidth: 150
    property int usualNameWidth: 200
    property int toolTipDelay: 500

    readonly property int lineHeight: Math.ceil(metrics.height)
    readonly property FontMetrics metrics: FontMetrics { font.pixelSize: style.pixelSize }
    // The size in pixels of a font that is given in points.
    readonly property Text systemText: Text { textFormat: Text.PlainText }

    // A hue of their own lets types be told apart at a glance; all else stays neutral.
    property var typeHues: ({ "mesh": 0.52, "light": 0.13, "camera": 0.60, "bone": 0.08,
                              "material": 0.90 })

    function typeColor(type) {
        return iconColor(type, false, rowTones);
    }
    // Of a row's icon; dimmed it is nearer to what is behind it.
    function iconColor(type, dimmed, tones) {
        const hue = typeHues[type];
        const color = hue === undefined ? blend(text, base, 0.3)
                                        : Qt.hsla(hue, dark ? 0.42 : 0.6, dark ? 0.66 : 0.36, 1);
        return legible(dimmed ? blend(color, tones.surface, 0.5) : color, tones.surface, iconContrast);
    }
    function blend(from, to, amount) {
        return Qt.rgba(from.r + (to.r - from.r) * amount, from.g + (to.g - from.g) * amount,
                       from.b + (to.b - from.b) * amount, 1);
    }
    function alpha(color, opacity) {
        return Qt.rgba(color.r, color.g, color.b, opacity);
    }
    // A background with some of the highlight, as much as leaves room for texts of several tones.
    function highlighted(most) {
        let amount = most;
        while (amount > 0.05
               && contrast(palette.text, over(blend(base, highlight, amount))) < textContrast * 1.3)
            amount *= 0.85;
        return blend(base, highlight, amount);
    }
    // The colour with the pointer over it.
    function over(color) {
        return blend(color, hover, hover.a);
    }

    // As of WCAG 2.1, relative luminance and contrast ratio.
    function luminance(color) {
        const c = Qt.tint(color, "transparent"); // may be a name
        const linear = value => value <= 0.03928 ? value / 12.92 : Math.pow((value + 0.055) / 1.055, 2.4);
        return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b);
    }
    function contrast(one, other) {
        const a = luminance(one);
        const b = luminance(other);
        return (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    }
    // The one that is nearest to a text's colour.
    function hardest(backgrounds) {
        const order = dark ? 1 : -1;
        return backgrounds.reduce((a, b) => order * luminance(b) > order * luminance(a) ? b : a);
    }
    // The colour, moved no further towards white or black than that contrast takes.
    function legible(wanted, background, ratio) {
        const color = Qt.tint(wanted, "transparent");
        if (contrast(color, background) >= ratio)
            return color;
        const end = contrast("white", background) > contrast("black", background)
                    ? Qt.rgba(1, 1, 1, 1) : Qt.rgba(0, 0, 0, 1);
        let near = 0;
        let far = 1;
        for (let step = 0; step < 8; ++step) {
            const middle = (near + far) / 2;
            if (contrast(rounded(blend(color, end, middle)), background) < ratio)
                near = middle;
            else
                far = middle;
        }
        return rounded(blend(color, end, far));
    }
    // As it will be painted.
    function rounded(color) {
        const whole = value => Math.round(value * 255) / 255;
        return Qt.rgba(whole(color.r), whole(color.g), whole(color.b), 1);
    }
}
