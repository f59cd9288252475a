import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

// Takes all input while something is running, and shows its progress once that takes long enough
// to notice. Escape cancels.
Popup {
    id: popup

    property bool running: false
    property string text
    // From 0 to 1; unknown when not above 0.
    property real progress: 0

    property bool due: false

    signal canceled()

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: 380
    padding: 20
    modal: true
    focus: true
    closePolicy: Popup.NoAutoClose
    visible: running
    onVisibleChanged: due = false

    Overlay.modal: Rectangle {
        color: popup.due ? Qt.rgba(theme.pane.r, theme.pane.g, theme.pane.b, 0.6) : "transparent"
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
        Keys.onEscapePressed: popup.canceled()

        Column {
            id: column

            width: parent.width
            visible: popup.due
            spacing: 12

            Text {
                width: parent.width
                text: DisplayText.oneLine(popup.text)
                color: theme.text
                font.pixelSize: 13
                elide: Text.ElideMiddle
                textFormat: Text.PlainText
            }
            ProgressBar {
                width: parent.width
                value: popup.progress
                indeterminate: popup.progress <= 0
            }
            EditorButton {
                objectName: "cancel_button"
                anchors.right: parent.right
                text: qsTr("Cancel")
                focusPolicy: Qt.NoFocus
                onClicked: popup.canceled()
            }
        }
    }
}
