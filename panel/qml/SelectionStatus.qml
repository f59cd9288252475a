import QtQuick 2.15

// How many rows are selected, and how many of them a filter hides.
QtObject {
    id: status

    property QtObject flatModel
    property QtObject selectionModel
    property int count: 0
    property int hidden: 0
    readonly property string text: hidden > 0 ? qsTr("%1 selected, %2 hidden").arg(count).arg(hidden)
                                 : count > 0 ? qsTr("%1 selected").arg(count) : ""

    property Connections selectionChanges: Connections {
        target: status.selectionModel

        function onSelectionChanged() { Qt.callLater(status.read); }
    }
    // Below collapsed rows only the arranged model tells what a filter hides.
    property Connections arrangedChanges: Connections {
        target: status.flatModel ? status.flatModel.sourceModel : null

        function onRowsInserted() { Qt.callLater(status.read); }
        function onRowsRemoved() { Qt.callLater(status.read); }
    }
    property Connections rowChanges: Connections {
        target: status.flatModel

        function onModelReset() { Qt.callLater(status.read); }
        function onRearranged() { Qt.callLater(status.read); }
        function onRowsInserted() { Qt.callLater(status.read); }
        function onRowsRemoved() { Qt.callLater(status.read); }
    }

    function read() {
        count = flatModel.selectionCount();
        hidden = flatModel.hiddenSelectionCount();
    }
}
