import QtQuick 2.15
import QtQuick.Controls 2.15

ToolTip {
    id: toolTip

    property QtObject style

    delay: style.toolTipDelay
    padding: style.spacing + 1
    margins: 4

    contentItem: Text {
        text: toolTip.text
        color: toolTip.style.text
        font.pixelSize: toolTip.style.pixelSize
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        color: toolTip.style.header
        border.color: toolTip.style.separator
        radius: 2
    }
}
