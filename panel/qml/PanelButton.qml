import QtQuick 2.15
import QtQuick.Controls 2.15

Button {
    id: button

    property QtObject style

    implicitHeight: style.controlHeight
    implicitWidth: Math.max(76, contentItem.implicitWidth)
    padding: 0
    font.pixelSize: style.pixelSize

    contentItem: Text {
        leftPadding: button.style.spacing * 3
        rightPadding: button.style.spacing * 3
        text: button.text
        font: button.font
        color: button.enabled ? button.style.text : button.style.faintText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
    }
    background: Rectangle {
        radius: 3
        color: button.down ? button.style.selection
                           : button.hovered ? button.style.alternateBase : button.style.header
        border.color: button.activeFocus ? button.style.focus : button.style.separator
    }
}
