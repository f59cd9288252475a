import QtQuick 2.15
import Kyr.SceneOutline 1.0

// The heading of a nested object; a click folds its lines.
Item {
    id: group

    property alias title: label.text
    property bool expanded: true

    signal toggled

    Rectangle {
        anchors { fill: parent; topMargin: 3; bottomMargin: 1 }
        color: mouse.containsMouse ? Qt.lighter(theme.header, 1.08) : theme.header
    }
    PanelIcon {
        id: arrow

        x: 4
        anchors { verticalCenter: parent.verticalCenter; verticalCenterOffset: 1 }
        name: "arrow"
        rotation: group.expanded ? 90 : 0
        color: theme.dimText
    }
    Text {
        id: label

        anchors {
            left: arrow.right
            leftMargin: 3
            verticalCenter: parent.verticalCenter
            verticalCenterOffset: 1
        }
        color: theme.text
        font { pixelSize: 12; bold: true }
        textFormat: Text.PlainText
    }
    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
        onClicked: group.toggled()
    }
}
