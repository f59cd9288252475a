import QtQuick 2.15

// The titles above the tree, in the widths of its rows.
Rectangle {
    id: header

    property QtObject style
    property bool showCount
    property int buttonCount
    property int rightMargin

    implicitHeight: style.headerHeight
    color: style.header

    Text {
        anchors {
            left: parent.left
            leftMargin: header.style.spacing * 2
            right: countTitle.left
            verticalCenter: parent.verticalCenter
        }
        text: qsTr("Name")
        color: header.style.dimText
        font.pixelSize: header.style.pixelSize
        elide: Text.ElideRight
    }
    Text {
        id: countTitle

        anchors {
            right: parent.right
            rightMargin: header.rightMargin + header.buttonCount * header.style.buttonWidth
                         + header.style.spacing
            verticalCenter: parent.verticalCenter
        }
        visible: header.showCount
        width: visible ? header.style.countWidth : 0
        horizontalAlignment: Text.AlignRight
        text: qsTr("Count")
        color: header.style.dimText
        font.pixelSize: header.style.pixelSize
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 1
        color: header.style.separator
    }
}
