import QtQuick 2.15
import QtQuick.Controls 2.15

// The host's messages, the latest one in view unless the user scrolled away from it.
Rectangle {
    id: view

    signal closeRequested

    color: theme.pane

    PaneHeader {
        id: header

        anchors { left: parent.left; right: parent.right }
        title: qsTr("Log")

        PaneButton {
            text: qsTr("Clear")
            enabled: list.count > 0
            onClicked: session.log.clear()
        }
        PaneButton {
            text: "✕"
            description: qsTr("Hide the log")
            onClicked: view.closeRequested()
        }
    }
    ListView {
        id: list

        property bool following: true

        objectName: "log_list"
        anchors {
            left: parent.left
            right: parent.right
            top: header.bottom
            bottom: parent.bottom
        }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: session.log
        // A highlight that nobody sees would run after the rows that come and go.
        currentIndex: -1
        highlightFollowsCurrentItem: false
        topMargin: 2
        bottomMargin: 2
        reuseItems: true
        onMovementEnded: following = atYEnd
        onCountChanged: {
            if (following)
                Qt.callLater(positionViewAtEnd);
        }
        ScrollBar.vertical: ScrollBar {
            onPressedChanged: {
                if (!pressed)
                    list.following = list.atYEnd;
            }
        }

        delegate: Row {
            readonly property color color: model.severity === 2 ? theme.error
                                         : model.severity === 1 ? theme.warning : theme.text

            width: ListView.view.width
            leftPadding: 8
            spacing: 10

            Text {
                id: time

                text: model.time
                color: theme.dimText
                font.pixelSize: 11
                topPadding: 2
                bottomPadding: 2
                textFormat: Text.PlainText
            }
            Text {
                width: parent.width - x - 16
                text: model.text
                color: parent.color
                font.pixelSize: 11
                topPadding: 2
                bottomPadding: 2
                wrapMode: Text.Wrap
                textFormat: Text.PlainText
            }
        }
    }
}
