import QtQuick 2.15
import Kyr.SceneOutline 1.0

// What a row has in one column: a text, a number, a colour, or a bool to click on.
Item {
    id: cell

    property QtObject style
    property var value
    property bool toggle
    property int alignment: Qt.AlignLeft
    property bool dimmed
    property var tones: style.rowTones

    readonly property bool isColor: value !== undefined && value !== null && value.hslHue !== undefined
    readonly property bool checked: value === true
    readonly property string text: toggle || isColor || value === undefined || value === null ? ""
        : typeof value === "number" ? String(Number(value.toPrecision(6))) : String(value)
    readonly property bool elided: label.truncated

    Text {
        id: label

        anchors { fill: parent; leftMargin: cell.style.spacing; rightMargin: cell.style.spacing }
        visible: cell.text !== ""
        text: DisplayText.oneLine(cell.text)
        clip: DisplayText.mayReachOut(text)
        color: cell.dimmed ? cell.tones.faint : cell.tones.dim
        font.pixelSize: cell.style.pixelSize
        horizontalAlignment: cell.alignment
        verticalAlignment: Text.AlignVCenter
        // Ends tell paths apart.
        elide: cell.alignment === Qt.AlignLeft ? Text.ElideMiddle : Text.ElideRight
        textFormat: Text.PlainText
    }
    Rectangle {
        anchors.centerIn: parent
        visible: cell.isColor
        width: Math.min(parent.width - cell.style.spacing * 2, 24)
        height: 12
        radius: 2
        color: cell.isColor ? cell.value : "transparent"
        border.color: cell.style.separator
    }
    Rectangle {
        anchors.centerIn: parent
        visible: cell.toggle && typeof cell.value === "boolean"
        width: 14
        height: 14
        radius: 2
        color: cell.checked ? cell.style.highlight : "transparent"
        border.color: cell.checked ? cell.tones.dim : cell.tones.faintIcon

        PanelIcon {
            anchors.centerIn: parent
            width: 12
            height: 12
            visible: cell.checked
            name: "check"
            color: cell.style.highlightedText
        }
    }
}
