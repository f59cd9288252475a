import QtQuick 2.15
import QtQuick.Dialogs 1.3

// A swatch and the colour's hexadecimal code; a click opens the colour dialog.
Item {
    id: field

    readonly property string code: String(line.value).toUpperCase()

    implicitHeight: 20

    Accessible.role: Accessible.Button
    Accessible.name: line.label

    Rectangle {
        anchors { left: parent.left; right: codeText.left; rightMargin: 8 }
        height: parent.height
        radius: 2
        color: line.value
        border { color: mouse.containsMouse ? theme.accent : theme.border; width: 1 }

        Text {
            anchors.centerIn: parent
            visible: line.mixed
            text: "–"
            color: parent.color.hslLightness > 0.5 ? "black" : "white"
            font.pixelSize: 12
            textFormat: Text.PlainText
        }
        MouseArea {
            id: mouse

            anchors.fill: parent
            hoverEnabled: true
            enabled: !line.readOnly
            onClicked: {
                dialog.color = line.value;
                dialog.open();
            }
        }
    }
    Text {
        id: codeText

        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        width: 62
        text: line.mixed ? "" : field.code
        color: theme.dimText
        font.pixelSize: 11
        textFormat: Text.PlainText
    }
    ColorDialog {
        id: dialog

        title: line.label
        onAccepted: session.inspector.setColor(row, color)
    }
}
