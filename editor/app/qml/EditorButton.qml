import QtQuick 2.15
import QtQuick.Controls 2.15

// A button of a dialog, with a frame that shows the focus. Enter presses it, and the one that Enter
// presses from elsewhere in the dialog is marked.
Button {
    id: button

    property bool isDefault: false

    implicitWidth: Math.max(84, contentItem.implicitWidth + 28)
    implicitHeight: 26
    font.pixelSize: 12
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: button.text
        textFormat: Text.PlainText
        font: button.font
        color: button.isDefault ? theme.palette.highlightedText : theme.text
        opacity: button.enabled ? 1 : 0.5
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: 3
        color: button.isDefault ? (button.down || button.hovered ? Qt.lighter(theme.accent, 1.1)
                                                                 : theme.accent)
                                : button.down || button.hovered ? theme.border : theme.header
        border { width: button.activeFocus ? 2 : 1; color: button.activeFocus ? theme.text : theme.border }
    }
}
