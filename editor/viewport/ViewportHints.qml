import QtQuick 2.15

// How to move about, on one line. Lets go of the rear entries when there is no room for them.
Row {
    id: hints

    property color textColor: "#d8dce2"
    // Keeps texts apart from whatever is behind them.
    property color haloColor: "transparent"
    property real maximumWidth: Infinity

    readonly property var entries: [
        [qsTr("Middle or Alt + Left drag"), qsTr("Orbit")],
        [qsTr("Shift + Middle"), qsTr("Pan")],
        [qsTr("Wheel"), qsTr("Zoom")],
        [qsTr("Right + WASD"), qsTr("Fly")],
        [qsTr("F"), qsTr("Frame")],
        [qsTr("Home"), qsTr("Frame all")],
        [qsTr("Left drag"), qsTr("Select")]
    ]

    spacing: 14

    Repeater {
        model: hints.entries

        Row {
            spacing: 5
            visible: x + width <= hints.maximumWidth

            Rectangle {
                width: key.implicitWidth + 10
                height: key.implicitHeight + 4
                radius: 3
                color: "transparent"
                border.color: Qt.rgba(hints.textColor.r, hints.textColor.g, hints.textColor.b, 0.4)

                Text {
                    id: key

                    anchors.centerIn: parent
                    text: modelData[0]
                    color: hints.textColor
                    style: Text.Outline
                    styleColor: hints.haloColor
                    font.pixelSize: 11
                    textFormat: Text.PlainText
                }
            }

            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: modelData[1]
                color: hints.textColor
                opacity: 0.8
                style: Text.Outline
                styleColor: hints.haloColor
                font.pixelSize: 11
                textFormat: Text.PlainText
            }
        }
    }
}
