import QtQuick 2.15
import QtQuick.Controls 2.15

// A button of a dialog, with a frame that shows the focus.
Button {
    id: button

    implicitWidth: Math.max(84, contentItem.implicitWidth + 28)
    implicitHeight: 26
    font.pixelSize: 12

    contentItem: Text {
        text: button.text
        font: button.font
        color: theme.text
        opacity: button.enabled ? 1 : 0.5
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
    }
    background: Rectangle {
        radius: 3
        color: button.down ? theme.accent : button.hovered ? theme.border : theme.header
        border.color: button.activeFocus ? theme.accent : theme.border
    }
}
