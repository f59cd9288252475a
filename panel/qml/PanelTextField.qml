import QtQuick 2.15
import QtQuick.Controls 2.15

// A line of text in the panel's colours, with a button that clears it.
TextField {
    id: field

    property QtObject style
    property bool invalid
    property bool clearable: true
    // Room for controls of its user at the right end.
    property int trailingWidth: 0

    readonly property int clearWidth: clearable && text !== "" ? style.buttonWidth : 0

    implicitHeight: style.controlHeight
    leftPadding: style.spacing * 2
    rightPadding: style.spacing + trailingWidth + clearWidth
    topPadding: 0
    bottomPadding: 0
    verticalAlignment: TextInput.AlignVCenter
    font.pixelSize: style.pixelSize
    color: invalid ? style.error : style.text
    placeholderTextColor: style.faintText
    selectionColor: style.highlight
    selectedTextColor: style.highlightedText
    selectByMouse: true

    background: Rectangle {
        color: field.style.base
        radius: 3
        border.color: field.invalid ? field.style.error
                                    : field.activeFocus ? field.style.focus : field.style.separator
    }

    PanelIcon {
        objectName: "clear_button"
        x: parent.width - field.trailingWidth - field.style.buttonWidth
        anchors.verticalCenter: parent.verticalCenter
        visible: field.clearWidth > 0
        name: "clear"
        color: clearArea.containsMouse ? field.style.text : field.style.dimText

        MouseArea {
            id: clearArea

            anchors { fill: parent; margins: -3 }
            hoverEnabled: true
            cursorShape: Qt.ArrowCursor
            onClicked: {
                field.clear();
                field.textEdited();
            }
            Accessible.role: Accessible.Button
            Accessible.name: qsTr("Clear")
        }
    }
}
