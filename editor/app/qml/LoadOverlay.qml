import QtQuick 2.15
import QtQuick.Controls 2.15

// Covers the window while a file is read, once that takes long enough to notice.
Rectangle {
    id: overlay

    property bool due: false

    objectName: "load_overlay"
    visible: session.loader.loading && due
    color: Qt.rgba(theme.pane.r, theme.pane.g, theme.pane.b, 0.72)

    Connections {
        target: session.loader

        function onLoadingChanged() {
            overlay.due = false;
            patience.running = session.loader.loading;
        }
    }
    Timer {
        id: patience

        interval: 200
        onTriggered: overlay.due = true
    }

    // What lies below is the scene that is about to go.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onWheel: wheel.accepted = true
    }
    Rectangle {
        anchors.centerIn: parent
        width: 380
        height: column.height + 40
        radius: 4
        color: theme.palette.window
        border.color: theme.border

        Column {
            id: column

            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 20 }
            spacing: 12

            Text {
                width: parent.width
                text: qsTr("Opening %1").arg(session.loader.fileName)
                color: theme.text
                font.pixelSize: 13
                elide: Text.ElideMiddle
                textFormat: Text.PlainText
            }
            ProgressBar {
                width: parent.width
                value: session.loader.progress
                indeterminate: session.loader.progress <= 0
            }
            Button {
                objectName: "cancel_load"
                anchors.right: parent.right
                text: qsTr("Cancel")
                onClicked: session.loader.cancel()
            }
        }
    }
}
