import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

ToolTip {
    id: toolTip

    property QtObject style

    delay: style.toolTipDelay
    padding: style.spacing + 1
    margins: 4
    // Escape belongs to whatever has the keyboard.
    closePolicy: Popup.NoAutoClose

    contentItem: Text {
        text: DisplayText.excerpt(toolTip.text)
        color: toolTip.style.text
        font.pixelSize: toolTip.style.pixelSize
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
    background: Rectangle {
        color: toolTip.style.header
        border.color: toolTip.style.separator
        radius: 2
    }
}
