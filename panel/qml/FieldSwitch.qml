import QtQuick 2.15

// A small button inside a text field.
Rectangle {
    id: button

    property QtObject style
    property string text
    property string description
    property bool checkable
    property bool on

    signal toggled()

    width: 22
    radius: 2
    color: on ? style.selection : area.containsMouse ? style.hover : "transparent"
    border.color: activeFocus ? style.focus : "transparent"
    activeFocusOnTab: true

    Accessible.role: checkable ? Accessible.CheckBox : Accessible.Button
    Accessible.name: description
    Accessible.checkable: checkable
    Accessible.checked: checkable && on
    Accessible.onPressAction: toggled()

    Keys.onSpacePressed: toggled()
    Keys.onReturnPressed: toggled()

    Text {
        anchors.centerIn: parent
        text: button.text
        color: button.on ? button.style.selectedTones.text : button.style.dimText
        font { pixelSize: button.style.pixelSize; bold: button.on }
        textFormat: Text.PlainText
    }
    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.ArrowCursor
        onClicked: button.toggled()
    }
    PanelToolTip {
        style: button.style
        text: button.description
        visible: area.containsMouse
    }
}
