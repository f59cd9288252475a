import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

// A flat button for a PaneHeader or a bar.
AbstractButton {
    id: button

    property string description

    implicitHeight: 23
    implicitWidth: Math.max(24, label.implicitWidth + 16)
    focusPolicy: Qt.NoFocus
    hoverEnabled: true

    Accessible.name: description || text

    PanelToolTip {
        style: EditorStyle {}
        text: button.description
        visible: button.hovered && text !== ""
    }

    contentItem: Text {
        id: label

        text: button.text
        color: button.hovered ? theme.text : theme.dimText
        opacity: button.enabled ? 1 : 0.5
        font.pixelSize: 11
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
    }
    background: Rectangle {
        color: theme.text
        opacity: button.down ? 0.16 : button.hovered ? 0.08 : 0
    }
}
