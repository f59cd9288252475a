import QtQuick 2.15
import Kyr.SceneOutline 1.0

// A line of text with the number of objects of each type behind it.
Rectangle {
    id: bar

    property QtObject context
    property string text
    // Where there is no room for all of it.
    property string shortText: text
    readonly property PanelStyle style: PanelStyle {}

    implicitHeight: 26
    color: style.header
    clip: true
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Text {
        anchors {
            left: parent.left
            leftMargin: bar.style.spacing * 2
            right: types.left
            rightMargin: bar.style.spacing * 2
            verticalCenter: parent.verticalCenter
        }
        text: bar.text + "\u009c" + bar.shortText
        color: bar.style.text
        font.pixelSize: bar.style.pixelSize
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    Row {
        id: types

        anchors {
            right: parent.right
            rightMargin: bar.style.spacing * 2
            verticalCenter: parent.verticalCenter
        }
        spacing: bar.style.spacing * 2

        Repeater {
            model: ["group", "mesh", "light", "camera"]

            Row {
                id: type

                readonly property int count: bar.context ? bar.context.counts[modelData] || 0 : 0

                objectName: "count_" + modelData
                visible: count > 0
                spacing: 3
                Accessible.role: Accessible.StaticText
                Accessible.name: modelData + " " + count

                PanelIcon {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 14
                    height: 14
                    name: modelData
                    color: bar.style.typeColor(modelData)
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: type.count.toLocaleString(Qt.locale(), "f", 0)
                    color: bar.style.dimText
                    font.pixelSize: bar.style.pixelSize
                    textFormat: Text.PlainText
                }
            }
        }
    }
}
