import QtQuick 2.15
import QtQuick.Controls 2.15

// A check mark, a dash where objects differ.
AbstractButton {
    id: field

    implicitWidth: 22
    implicitHeight: 22
    enabled: !line.readOnly

    Accessible.role: Accessible.CheckBox
    Accessible.name: line.label
    Accessible.checked: line.value === true && !line.mixed

    onClicked: session.inspector.setBoolean(row, line.mixed || line.value !== true)

    FieldBackground {
        anchors.verticalCenter: parent.verticalCenter
        width: 16
        height: 16
        focused: field.visualFocus || field.hovered

        Text {
            anchors.centerIn: parent
            text: line.mixed ? "–" : line.value === true ? "✓" : ""
            color: theme.text
            opacity: field.enabled ? 1 : 0.5
            font { pixelSize: 12; bold: true }
            textFormat: Text.PlainText
        }
    }
}
