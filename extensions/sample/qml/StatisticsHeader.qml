import QtQuick 2.15

// What is in the scene. `context` counts its rows.
TypeBar {
    id: header

    // The row of the scene itself is no object.
    readonly property int total: context ? context.total - (context.counts.scene || 0) : 0

    objectName: "statistics_header"
    text: total === 1 ? qsTr("1 object") : qsTr("%1 objects").arg(shortText)
    shortText: total.toLocaleString(Qt.locale(), "f", 0)

    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 1
        color: header.style.separator
    }
}
