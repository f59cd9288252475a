import QtQuick 2.15
import Kyr.SceneOutline 1.0

// One column in the chooser: a check box, or a button that removes it.
Rectangle {
    id: row

    property QtObject style
    property string title
    property int depth: 0
    property bool group: false
    property bool checkable: false
    property bool checked: false
    property bool removable: false
    property bool current: false

    signal clicked()
    signal removed()

    objectName: "column_" + title
    width: ListView.view ? ListView.view.width : 0
    height: style.rowHeight
    color: current ? style.selection : area.containsMouse && !group ? style.hover : "transparent"

    Accessible.role: checkable ? Accessible.CheckBox : Accessible.ListItem
    Accessible.name: title
    Accessible.checked: checked
    Accessible.onPressAction: clicked()

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: row.clicked()
    }
    Rectangle {
        id: box

        x: row.style.spacing * 2 + row.depth * row.style.indentation
        anchors.verticalCenter: parent.verticalCenter
        visible: row.checkable
        width: 14
        height: 14
        radius: 2
        color: row.checked ? row.style.highlight : "transparent"
        border.color: row.checked ? row.style.highlight : row.style.dimText

        PanelIcon {
            anchors.centerIn: parent
            width: 12
            height: 12
            visible: row.checked
            name: "check"
            color: row.style.highlightedText
        }
    }
    Text {
        anchors {
            left: row.checkable ? box.right : parent.left
            leftMargin: row.style.spacing * 2
                        + (row.checkable ? 0 : row.depth * row.style.indentation)
            right: parent.right
            rightMargin: row.style.buttonWidth
            verticalCenter: parent.verticalCenter
        }
        text: DisplayText.oneLine(row.title)
        color: row.group ? row.style.dimText : row.style.text
        font { pixelSize: row.style.pixelSize; bold: row.group }
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    PanelIcon {
        objectName: "remove_button"
        anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
        visible: row.removable
        name: "clear"
        color: removeArea.containsMouse ? row.style.text : row.style.dimText

        MouseArea {
            id: removeArea

            anchors { fill: parent; margins: -3 }
            hoverEnabled: true
            onClicked: row.removed()
        }
        Accessible.role: Accessible.Button
        Accessible.name: qsTr("Remove %1").arg(row.title)
    }
}
