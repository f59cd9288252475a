import QtQuick 2.15

// Where the parts of a row are, the same in the header and in every row: the name, the columns (or
// the count, where an editor offers no columns), the row buttons at the right. Columns that leave no
// room for names scroll sideways between names and buttons.
QtObject {
    property QtObject style
    property QtObject columns
    property real width
    property int rightMargin
    property int buttonCount
    property bool hasCount
    property bool canChoose

    // How far the columns are scrolled.
    property real wantedOffset: 0
    readonly property int offset: Math.max(0, Math.min(wantedOffset, overflow))

    readonly property int buttonsX: width - rightMargin - buttonCount * style.buttonWidth
    readonly property int buttonsWidth: Math.max(buttonCount, canChoose ? 1 : 0) * style.buttonWidth
    readonly property int cellsRight: width - rightMargin - buttonsWidth
    // In which columns and names have all the room they want.
    readonly property int naturalWidth: style.usualNameWidth + wantedTotal + buttonsWidth
    readonly property var widths: columns.widths
    readonly property int wantedTotal: widths.reduce((sum, width) => sum + width, 0)
    readonly property int cellsWidth: Math.min(wantedTotal,
                                               Math.max(0, cellsRight - style.minimumNameWidth))
    readonly property int cellsLeft: cellsRight - cellsWidth
    readonly property int overflow: wantedTotal - cellsWidth
    readonly property bool showsCount: hasCount && columns.model === null
    readonly property var lefts: {
        let x = cellsLeft - offset;
        return widths.map(width => (x += width) - width);
    }
    readonly property int nameRight: widths.length > 0 ? cellsLeft
        : cellsRight - (showsCount ? style.countWidth + style.spacing : 0)

    function scrollBy(pixels) {
        wantedOffset = Math.max(0, Math.min(overflow, offset + pixels));
    }
    function show(column) {
        if (column < 0 || column >= lefts.length)
            return;
        const right = lefts[column] + widths[column];
        if (right > cellsRight)
            scrollBy(right - cellsRight);
        if (lefts[column] < cellsLeft)
            scrollBy(lefts[column] - cellsLeft);
    }
    // -1 beside the columns that show.
    function columnAt(x) {
        if (x < cellsLeft || x >= cellsRight)
            return -1;
        return lefts.findIndex((left, column) => x >= left && x < left + widths[column]);
    }
}
