import QtQuick 2.15
import Kyr.SceneOutline 1.0

// What is selected, what the last command did, and the state of the scene.
Rectangle {
    id: bar

    property string selectionText
    property bool canSelectMatches

    signal logRequested
    signal selectMatchesRequested

    function show(text) {
        message.text = DisplayText.oneLine(text);
        messageTimer.restart();
    }

    implicitHeight: 24
    color: theme.header

    Rectangle {
        width: parent.width
        height: 1
        color: theme.border
    }
    Text {
        id: selection

        objectName: "selection_text"
        anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
        text: bar.selectionText
        color: theme.text
        font.pixelSize: 12
        textFormat: Text.PlainText
    }
    Text {
        id: primary

        objectName: "primary_text"
        anchors {
            left: selection.right
            leftMargin: 12
            verticalCenter: parent.verticalCenter
        }
        width: Math.min(implicitWidth, 220)
        text: DisplayText.oneLine(session.selectionStatus.primaryName)
        color: theme.dimText
        font.pixelSize: 12
        elide: Text.ElideMiddle
        textFormat: Text.PlainText
    }
    Text {
        id: message

        objectName: "message_text"
        anchors {
            left: primary.right
            leftMargin: 24
            right: tools.left
            rightMargin: 16
            verticalCenter: parent.verticalCenter
        }
        color: theme.text
        font.pixelSize: 12
        elide: Text.ElideRight
        textFormat: Text.PlainText

        Timer {
            id: messageTimer

            interval: 8000
            onTriggered: message.text = ""
        }
    }
    Row {
        id: tools

        anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
        spacing: 12

        PaneButton {
            objectName: "select_matches"
            anchors.verticalCenter: parent.verticalCenter
            visible: bar.canSelectMatches
            text: qsTr("Select matches")
            description: qsTr("Select what the filter found")
            onClicked: bar.selectMatchesRequested()
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: text && !message.text
            text: session.undoStatus.undoName ? qsTr("Undo: %1").arg(DisplayText.oneLine(session.undoStatus.undoName)) : ""
            color: theme.dimText
            font.pixelSize: 12
            textFormat: Text.PlainText
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: session.document.modified ? qsTr("Modified") : qsTr("Saved")
            color: session.document.modified ? theme.warning : theme.dimText
            font.pixelSize: 12
            textFormat: Text.PlainText
        }
        PaneButton {
            anchors.verticalCenter: parent.verticalCenter
            text: session.log.problemCount > 0 ? qsTr("⚠ %1").arg(session.log.problemCount) : qsTr("Log")
            description: qsTr("Show or hide the log")
            onClicked: bar.logRequested()
        }
    }
}
