import QtQuick 2.15
import Kyr.SceneOutline 1.0

// The primary object's type and name, and how many others an edit goes to.
PaneHeader {
    id: header

    property QtObject style
    readonly property var status: session.selectionStatus

    title: status.count === 0 ? qsTr("Inspector") : ""

    Item {
        width: header.width
        height: parent.height
        visible: header.status.count > 0

        PanelIcon {
            id: icon

            x: 7
            anchors.verticalCenter: parent.verticalCenter
            name: header.status.primaryType || "object"
            color: header.style.typeColor(header.status.primaryType)
        }
        Text {
            anchors {
                left: icon.right
                leftMargin: 6
                right: locked.left
                rightMargin: 8
                verticalCenter: parent.verticalCenter
            }
            text: DisplayText.oneLine(header.status.primaryName)
            color: theme.text
            font { pixelSize: 12; bold: true }
            elide: Text.ElideRight
            textFormat: Text.PlainText
        }
        PanelIcon {
            id: locked

            anchors {
                right: others.left
                rightMargin: others.visible ? 8 : 0
                verticalCenter: parent.verticalCenter
            }
            visible: session.inspector.locked
            width: visible ? 16 : 0
            name: visible ? "locked" : ""
            color: theme.warning
        }
        Text {
            id: others

            anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
            visible: header.status.count > 1
            width: visible ? implicitWidth : 0
            text: qsTr("+ %1 more").arg((header.status.count - 1).toLocaleString(Qt.locale(), "f", 0))
            color: theme.dimText
            font.pixelSize: 11
            textFormat: Text.PlainText
        }
    }
}
