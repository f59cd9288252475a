import QtQuick 2.15

// Where the parts of a row are, the same in the header and in every row: the name, the columns (or
// the count, where an editor offers no columns), the row buttons at the right.
QtObject {
    property QtObject style
    property QtObject columns
    property real width
    property int rightMargin
    property int buttonCount
    property bool hasCount
    property bool canChoose

    readonly property int buttonsX: width - rightMargin - buttonCount * style.buttonWidth
    readonly property int buttonsWidth: Math.max(buttonCount, canChoose ? 1 : 0) * style.buttonWidth
    readonly property int cellsRight: width - rightMargin - buttonsWidth
    // In which columns and names have all the room they want.
    readonly property int naturalWidth: style.usualNameWidth + wantedTotal + buttonsWidth
    readonly property int wantedTotal: columns.widths.reduce((sum, width) => sum + width, 0)
    readonly property bool showsCount: hasCount && columns.model === null
    // Columns that leave no room for names share what there is.
    readonly property var widths: {
        const wanted = columns.widths;
        const room = Math.max(0, cellsRight - style.minimumNameWidth);
        return wantedTotal <= room ? wanted
                                   : wanted.map(width => Math.floor(width * room / wantedTotal));
    }
    readonly property var lefts: {
        let x = cellsRight - widths.reduce((sum, width) => sum + width, 0);
        return widths.map(width => (x += width) - width);
    }
    readonly property int nameRight: lefts.length > 0 ? lefts[0]
        : cellsRight - (showsCount ? style.countWidth + style.spacing : 0)
}
