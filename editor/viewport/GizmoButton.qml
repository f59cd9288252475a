import QtQuick 2.15

// A small button over the 3D view.
Rectangle {
    id: button

    property string text
    property string description
    property bool checked
    // From its left edge to where the view ends; the description stays inside.
    property real room: Infinity
    property bool dark: true
    property color textColor
    property color activeColor
    readonly property color foreground: checked ? activeColor : textColor

    signal clicked

    width: label.implicitWidth + 16
    height: 24
    radius: 3
    color: dark ? Qt.rgba(0.08, 0.09, 0.11, area.containsMouse ? 0.85 : 0.6)
                : Qt.rgba(1, 1, 1, area.containsMouse ? 0.95 : 0.7)
    border.color: checked ? activeColor : "transparent"

    Accessible.role: Accessible.Button
    Accessible.name: description
    Accessible.checkable: checked
    Accessible.checked: checked
    Accessible.onPressAction: button.clicked()

    Text {
        id: label

        anchors.centerIn: parent
        text: button.text
        textFormat: Text.PlainText
        color: button.foreground
        font.pixelSize: 11
    }
    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: button.clicked()
    }
    Rectangle {
        visible: area.containsMouse && button.description
        x: Math.min(0, button.room - width)
        y: button.height + 4
        z: 1
        width: tip.implicitWidth + 12
        height: tip.implicitHeight + 6
        radius: 3
        color: button.dark ? "#e6181a1e" : "#f2ffffff"
        border.color: Qt.rgba(button.textColor.r, button.textColor.g, button.textColor.b, 0.3)

        Text {
            id: tip

            anchors.centerIn: parent
            text: button.description
            textFormat: Text.PlainText
            color: button.textColor
            font.pixelSize: 11
        }
    }
}
