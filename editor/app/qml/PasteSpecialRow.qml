import QtQuick 2.15

// One property that could be pasted, or the heading of a group of them.
Rectangle {
    id: row

    property bool current

    signal toggled

    height: 24
    color: current ? Qt.rgba(theme.accent.r, theme.accent.g, theme.accent.b, 0.35)
                   : model.group ? theme.header : "transparent"

    Accessible.role: Accessible.CheckBox
    Accessible.name: model.label
    Accessible.checked: model.checked === Qt.Checked

    FieldBackground {
        id: box

        x: model.group ? 6 : 22
        anchors.verticalCenter: parent.verticalCenter
        width: 14
        height: 14

        Text {
            anchors.centerIn: parent
            text: model.checked === Qt.Checked ? "✓" : model.checked === Qt.PartiallyChecked ? "–" : ""
            color: theme.text
            font { pixelSize: 11; bold: true }
            textFormat: Text.PlainText
        }
    }
    Text {
        id: label

        anchors { left: box.right; leftMargin: 7; verticalCenter: parent.verticalCenter }
        width: Math.min(implicitWidth, numbers.x - x - 8)
        text: model.label
        color: model.group || model.takers > 0 ? theme.text : theme.dimText
        font { pixelSize: 12; bold: model.group }
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    Text {
        anchors {
            left: label.right
            leftMargin: 10
            right: numbers.left
            rightMargin: 4
            verticalCenter: parent.verticalCenter
        }
        text: model.problem
        color: theme.dimText
        font.pixelSize: 11
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    Row {
        id: numbers

        anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }
        visible: !model.group

        Repeater {
            model: [row.takers, row.differing]

            Text {
                width: 64
                text: modelData.toLocaleString(Qt.locale(), "f", 0)
                horizontalAlignment: Text.AlignRight
                color: modelData > 0 ? theme.text : theme.dimText
                font.pixelSize: 12
                textFormat: Text.PlainText
            }
        }
    }
    MouseArea {
        anchors.fill: parent
        onClicked: row.toggled()
    }

    readonly property int takers: model.takers
    readonly property int differing: model.differing
}
