import QtQuick 2.15
import Kyr.SceneOutline 1.0

// The name of one row, or its text in one column, to edit in place. Stays open while the model refuses
// what was typed. Tab goes on to the next column that can be edited.
PanelTextField {
    id: field

    property Item list
    property QtObject outline
    property QtObject rowEditor
    property QtObject layout
    property var columns: []

    property int row: -1
    // -1 for the name.
    property int column: -1
    property bool refused: false
    property string before

    // What it was opened for, wherever the columns are put meanwhile; null for the name.
    property var edited: null
    readonly property var choices: edited ? edited.choices : []
    readonly property int smallestWidth: 64

    signal closed()

    function open(atRow, atColumn) {
        const item = list.itemAtIndex(atRow);
        if (!item)
            return;
        layout.show(atColumn);
        handle.assign(atRow);
        column = atColumn;
        edited = atColumn < 0 ? null : columns[atColumn];
        row = atRow;
        place(item);
        before = item.editText(column);
        text = before;
        refused = false;
        forceActiveFocus();
        selectAll();
    }
    function place(item) {
        if (column < 0) {
            x = item.nameItem.x - leftPadding;
            width = layout.nameRight - x;
        } else {
            width = Math.max(smallestWidth, layout.widths[column]);
            x = Math.max(0, Math.min(layout.lefts[column], layout.cellsRight - width));
        }
    }
    function close() {
        if (row < 0)
            return;
        row = -1;
        // Else the tree's focus comes back to the field, which takes keys such as Ctrl+Z unseen.
        focus = false;
        closed();
    }
    function write() {
        if (!edited)
            return rowEditor.rename(handle.sourceIndex, text);
        const now = handle.row();
        return text === before || (now >= 0 && handle.standsFor(now)
            && rowEditor.setCell(now, edited.valueRole, text, qsTr("Set %1").arg(edited.title)));
    }
    // Keeps a good text, and stays with none.
    function finish() {
        if (row < 0)
            return;
        write();
        close();
    }
    function commit() {
        refused = !write();
        if (!refused)
            close();
        return !refused;
    }
    // The next column of the row that takes a text, or its name.
    function goOn(step) {
        let next = column + step;
        const item = list.itemAtIndex(row);
        while (next >= 0 && next < columns.length && !item.canEdit(next))
            next += step;
        if (next < -1 || next >= columns.length || !commit())
            return;
        // What was written may have put the row elsewhere.
        list.forceLayout();
        const now = handle.row();
        if (!handle.standsFor(now))
            return;
        list.positionViewAtIndex(now, ListView.Contain);
        open(now, next);
    }
    function choose(step) {
        const now = choices.indexOf(text);
        text = choices[(now + step + choices.length) % choices.length];
        selectAll();
    }
    function follow() {
        if (row < 0)
            return;
        const now = handle.row();
        // Below a closed row, filtered out or gone.
        if (now < 0 || !handle.standsFor(now))
            close();
        else
            row = now;
    }

    objectName: "cell_field"
    visible: row >= 0
    y: row * implicitHeight + list.originY - list.contentY
    implicitHeight: style.rowHeight
    leftPadding: style.spacing
    clearable: false
    invalid: refused
    horizontalAlignment: edited && edited.alignment === Qt.AlignRight
                         ? TextInput.AlignRight : TextInput.AlignLeft

    Accessible.name: edited ? edited.title : qsTr("New name")
    Accessible.description: choices.join(", ")

    onColumnsChanged: {
        if (row < 0 || !edited)
            return;
        column = columns.findIndex(other => other.columnId === edited.columnId);
        if (column < 0)
            finish();
        else
            Qt.callLater(place, null);
    }
    onTextEdited: refused = false
    Keys.onReturnPressed: commit()
    Keys.onEnterPressed: commit()
    Keys.onEscapePressed: close()
    Keys.onTabPressed: goOn(1)
    Keys.onBacktabPressed: goOn(-1)
    Keys.onUpPressed: event.accepted = choices.length > 0 && (choose(-1), true)
    Keys.onDownPressed: event.accepted = choices.length > 0 && (choose(1), true)
    // A click elsewhere keeps a good text; focus never stays with a bad one.
    onActiveFocusChanged: {
        if (activeFocus || row < 0)
            return;
        write();
        row = -1;
        focus = false;
    }

    RowHandle {
        id: handle

        outline: field.outline
    }
    Connections {
        target: field.outline

        function onCountChanged() { Qt.callLater(field.follow); }
        function onRowsMoved() { Qt.callLater(field.follow); }
    }
    PanelToolTip {
        style: field.style
        delay: 0
        y: field.height + 2
        text: field.choices.length > 0 ? field.choices.join(", ") : qsTr("This is no value")
        visible: field.visible && field.activeFocus && field.column >= 0
                 && (field.refused || field.choices.length > 0)
    }
}
