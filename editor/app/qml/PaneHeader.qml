import QtQuick 2.15

// The title strip of a pane. Children stand at its right end.
Rectangle {
    id: header

    property alias title: label.text
    default property alias tools: row.data

    implicitHeight: 24
    color: theme.header

    Text {
        id: label

        anchors {
            left: parent.left
            leftMargin: 8
            right: row.left
            rightMargin: 8
            verticalCenter: parent.verticalCenter
        }
        color: theme.dimText
        font.pixelSize: 12
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    Row {
        id: row

        anchors { right: parent.right; top: parent.top; bottom: parent.bottom; bottomMargin: 1 }
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 1
        color: theme.border
    }
}
