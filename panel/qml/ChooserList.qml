import QtQuick 2.15
import QtQuick.Controls 2.15

// A titled list of columns with its keyboard: Space and Enter act on a row, Delete removes it.
FocusScope {
    id: chooserList

    property QtObject style
    property string title
    property string emptyText
    property alias model: list.model
    property alias delegate: list.delegate
    property alias currentIndex: list.currentIndex
    property alias count: list.count

    readonly property int gap: style.spacing * 2

    signal activated(int row)
    signal removed(int row)

    activeFocusOnTab: true

    Text {
        id: heading

        text: chooserList.title
        color: chooserList.style.dimText
        font.pixelSize: chooserList.style.pixelSize
        textFormat: Text.PlainText
    }
    Rectangle {
        anchors { fill: parent; topMargin: heading.height + chooserList.style.spacing }
        color: chooserList.style.base
        radius: 3
        border.color: chooserList.activeFocus ? chooserList.style.focus : chooserList.style.separator

        ListView {
            id: list

            anchors { fill: parent; margins: 1 }
            focus: true
            // A search may take away rows that are being made ahead.
            cacheBuffer: 0
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            ScrollBar.vertical: PanelScrollBar { style: chooserList.style }

            Accessible.role: Accessible.List
            Accessible.name: chooserList.title

            Keys.onSpacePressed: chooserList.activated(currentIndex)
            Keys.onReturnPressed: chooserList.activated(currentIndex)
            Keys.onDeletePressed: chooserList.removed(currentIndex)
        }
        Text {
            anchors.centerIn: parent
            visible: list.count === 0
            text: chooserList.emptyText
            color: chooserList.style.faintText
            font.pixelSize: chooserList.style.pixelSize
            textFormat: Text.PlainText
        }
    }
}
