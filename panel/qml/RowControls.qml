import QtQuick 2.15

// The toggles, buttons and editable cells in the rows: what a click on one does, and the cursor that
// goes through those of the focused row.
QtObject {
    id: controls

    property QtObject outline
    property QtObject rowEditor
    property var columns: []
    property int buttonCount: 0
    // A column or, counted on after them, a button; -1 for the row itself.
    property int cursor: -1
    readonly property var stops: {
        const stops = [];
        columns.forEach((column, index) => { if (column.toggle || column.editable) stops.push(index); });
        for (let button = 0; button < buttonCount; ++button)
            stops.push(columns.length + button);
        return stops;
    }

    // The cursor has come to a column.
    signal columnReached(int column)
    signal editRequested(int row, int column)

    onStopsChanged: leave()

    function leave() {
        cursor = -1;
    }
    function clickButton(row, button) {
        const role = outline.sourceRole("rowButtonsModel");
        const state = outline.data(outline.index(row, 0), role)[button];
        if (state)
            rowEditor.setButton(row, state.id, state.checked !== true, state.toolTip || state.id);
    }
    function clickToggle(row, column) {
        const role = columns[column].valueRole;
        const value = outline.data(outline.index(row, 0), role);
        if (typeof value === "boolean")
            rowEditor.setCell(row, role, !value, columns[column].title);
    }
    function clickAtCursor(row) {
        if (cursor < columns.length && columns[cursor].editable)
            editRequested(row, cursor);
        else if (cursor < columns.length)
            clickToggle(row, cursor);
        else
            clickButton(row, cursor - columns.length);
    }
    function move(step) {
        const stop = stops.indexOf(cursor) + step;
        cursor = stop < 0 ? -1 : stops[Math.min(stop, stops.length - 1)];
        if (cursor >= 0 && cursor < columns.length)
            columnReached(cursor);
    }
    // False for a key that is not about them.
    function key(event, row) {
        if (stops.length > 0 && event.modifiers === Qt.ControlModifier
            && (event.key === Qt.Key_Left || event.key === Qt.Key_Right)) {
            move(event.key === Qt.Key_Left ? -1 : 1);
            return true;
        }
        if (cursor < 0)
            return false;
        if (event.key === Qt.Key_Escape) {
            leave();
            return true;
        }
        if (event.key !== Qt.Key_Space && event.key !== Qt.Key_Return)
            return false;
        if (row >= 0)
            clickAtCursor(row);
        return true;
    }
}
