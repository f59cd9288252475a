import QtQuick 2.15
import QtQuick.Controls 2.15

// Takes all input while a task is running, and shows its progress once that takes long enough to
// notice. Escape cancels.
Popup {
    id: popup

    property bool due: false

    objectName: "task_popup"
    parent: Overlay.overlay
    anchors.centerIn: parent
    width: 380
    padding: 20
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose
    visible: session.task.running
    onVisibleChanged: due = false

    Overlay.modal: Rectangle {
        color: popup.due ? Qt.rgba(theme.pane.r, theme.pane.g, theme.pane.b, 0.5) : "transparent"
    }
    background: Rectangle {
        visible: popup.due
        radius: 4
        color: theme.palette.window
        border.color: theme.border
    }

    Timer {
        interval: 300
        running: popup.visible
        onTriggered: popup.due = true
    }
    contentItem: Item {
        focus: true
        implicitHeight: column.height
        // A modal popup takes the keys, but not the shortcuts of the menus.
        Keys.onShortcutOverride: event.accepted = true
        Keys.onEscapePressed: session.task.cancel()

        Column {
            id: column

            width: parent.width
            visible: popup.due
            spacing: 12

            Text {
                width: parent.width
                text: session.task.name
                color: theme.text
                font.pixelSize: 13
            }
            ProgressBar {
                width: parent.width
                value: session.task.progress
            }
            Button {
                objectName: "cancel_task"
                anchors.right: parent.right
                text: qsTr("Cancel")
                focusPolicy: Qt.NoFocus
                onClicked: session.task.cancel()
            }
        }
    }
}
