import QtQuick 2.15
import Kyr.SceneOutline 1.0

// The name of one row as a text to edit. Stays open while the model refuses what was typed.
PanelTextField {
    id: field

    property Item list
    property QtObject flatModel
    property QtObject rowEditor
    property int rightEdge

    property int row: -1
    property bool refused: false

    signal closed()

    function open(atRow) {
        const item = list.itemAtIndex(atRow);
        if (!item)
            return;
        handle.assign(atRow);
        row = atRow;
        x = item.nameItem.x - leftPadding;
        text = item.name;
        refused = false;
        forceActiveFocus();
        selectAll();
    }
    function close() {
        if (row < 0)
            return;
        row = -1;
        // Else the tree's focus comes back to the field, which takes keys such as Ctrl+Z unseen.
        focus = false;
        closed();
    }
    function commit() {
        if (rowEditor.rename(handle.sourceIndex, text))
            close();
        else
            refused = true;
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

    objectName: "rename_field"
    visible: row >= 0
    y: row * implicitHeight + list.originY - list.contentY
    width: rightEdge - x
    implicitHeight: style.rowHeight
    leftPadding: style.spacing
    clearable: false
    invalid: refused

    Accessible.name: qsTr("New name")

    onTextEdited: refused = false
    Keys.onReturnPressed: commit()
    Keys.onEnterPressed: commit()
    Keys.onEscapePressed: close()
    // A click elsewhere keeps a good name; focus never stays with a bad one.
    onActiveFocusChanged: {
        if (activeFocus || row < 0)
            return;
        rowEditor.rename(handle.sourceIndex, text);
        row = -1;
        focus = false;
    }

    RowHandle {
        id: handle

        flatModel: field.flatModel
    }
    Connections {
        target: field.flatModel

        function onCountChanged() { Qt.callLater(field.follow); }
        function onRowsMoved() { Qt.callLater(field.follow); }
    }
}
