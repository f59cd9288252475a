import QtQuick 2.15
import QtQuick.Controls 2.15

// What the filter field understands, by examples to click on.
Popup {
    id: help

    property QtObject style
    readonly property var lines: [
        ["lamp street", qsTr("“lamp” and “street”, in the name or above it")],
        ["lamp type:light", qsTr("lights below a lamp")],
        ["lamp|bulb", qsTr("either of them")],
        ["-wheel", qsTr("not that, nor what is below it")],
        ["\"left wheel\"", qsTr("with the space")],
        ["visible:no", qsTr("as locked:yes, modified:")],
        ["intensity>2", qsTr("any column by its title; also = != < <= >=")]
    ]

    signal exampleChosen(string text)

    objectName: "filter_help"
    padding: style.spacing * 2
    focus: true

    background: Rectangle {
        color: help.style.base
        border.color: help.style.separator
        radius: 3
    }
    contentItem: ListView {
        id: list

        implicitHeight: contentHeight
        focus: true
        model: help.lines
        currentIndex: -1
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationWraps: true

        Keys.onReturnPressed: choose(currentIndex)

        function choose(index) {
            if (index < 0)
                return;
            help.close();
            help.exampleChosen(help.lines[index][0]);
        }

        delegate: Rectangle {
            readonly property bool current: ListView.isCurrentItem

            width: ListView.view.width
            height: help.style.rowHeight
            radius: 2
            color: current || area.containsMouse ? help.style.selection : "transparent"

            Accessible.role: Accessible.ListItem
            Accessible.name: modelData[0] + ": " + modelData[1]
            Accessible.onPressAction: list.choose(index)

            Text {
                id: example

                x: help.style.spacing
                anchors.verticalCenter: parent.verticalCenter
                width: help.style.pixelSize * 10
                text: modelData[0]
                color: tones.text
                font { pixelSize: help.style.pixelSize; bold: true }
                elide: Text.ElideRight
                textFormat: Text.PlainText

                readonly property var tones: parent.current || area.containsMouse
                                             ? help.style.selectedTones : help.style.rowTones
            }
            Text {
                anchors {
                    left: example.right
                    leftMargin: help.style.spacing
                    right: parent.right
                    verticalCenter: parent.verticalCenter
                }
                text: modelData[1]
                color: example.tones.dim
                font.pixelSize: help.style.pixelSize
                elide: Text.ElideRight
                textFormat: Text.PlainText
            }
            MouseArea {
                id: area

                anchors.fill: parent
                hoverEnabled: true
                onClicked: list.choose(index)
            }
        }
    }
}
