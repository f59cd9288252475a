import QtQuick 2.15
import QtQuick.Controls 2.15

// The properties on the clipboard, to choose which of them are pasted. Up and Down go through the
// list, Space checks, Enter pastes.
EditorDialog {
    id: dialog

    readonly property var choices: session.edit.pasteSpecialModel

    function acceptChoice() {
        if (choices.chosenCount > 0)
            accept();
    }

    title: qsTr("Paste Special")
    focus: true
    width: Math.min(460, parent ? parent.width - 40 : 460)
    height: Math.min(560, parent ? parent.height - 40 : 560)

    onOpened: {
        list.currentIndex = 0;
        list.forceActiveFocus();
    }
    onAccepted: session.edit.pasteSpecial()

    Connections {
        target: session.edit

        function onPasteSpecialReady() { dialog.open(); }
    }

    contentItem: Item {
        Text {
            id: summary

            width: parent.width
            text: dialog.choices.targetCount === 1
                ? qsTr("Onto 1 object") : qsTr("Onto %1 objects").arg(dialog.choices.targetCount)
            color: theme.dimText
            font.pixelSize: 12
            textFormat: Text.PlainText
        }
        Row {
            id: headings

            anchors { right: parent.right; rightMargin: 14; top: summary.top }

            Repeater {
                model: [qsTr("Have it"), qsTr("Differ")]

                Text {
                    width: 64
                    text: modelData
                    horizontalAlignment: Text.AlignRight
                    color: theme.dimText
                    font.pixelSize: 12
                    textFormat: Text.PlainText
                }
            }
        }
        Rectangle {
            anchors.fill: list
            anchors.margins: -1
            color: "transparent"
            border.color: list.activeFocus ? theme.accent : theme.border
        }
        ListView {
            id: list

            objectName: "paste_special_list"
            anchors {
                left: parent.left
                right: parent.right
                top: summary.bottom
                topMargin: 6
                bottom: parent.bottom
                margins: 1
            }
            clip: true
            focus: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            model: dialog.choices
            ScrollBar.vertical: ScrollBar {}

            Keys.onSpacePressed: dialog.choices.toggle(currentIndex)
            Keys.onReturnPressed: dialog.acceptChoice()
            Keys.onEnterPressed: dialog.acceptChoice()

            delegate: PasteSpecialRow {
                width: ListView.view.width
                current: ListView.isCurrentItem && list.activeFocus
                onToggled: {
                    list.currentIndex = index;
                    dialog.choices.toggle(index);
                }
            }
        }
    }

    footer: Item {
        implicitHeight: 46

        Row {
            x: 20
            spacing: 8

            EditorButton {
                text: qsTr("All")
                implicitWidth: 60
                onClicked: dialog.choices.chooseAll(true)
            }
            EditorButton {
                objectName: "paste_none"
                text: qsTr("None")
                implicitWidth: 60
                onClicked: dialog.choices.chooseAll(false)
            }
        }
        Row {
            anchors { right: parent.right; rightMargin: 20 }
            spacing: 8

            EditorButton {
                objectName: "paste_special_accept"
                text: qsTr("Paste")
                isDefault: true
                enabled: dialog.choices.chosenCount > 0
                onClicked: dialog.accept()
                Keys.onReturnPressed: dialog.acceptChoice()
            }
            EditorButton {
                text: qsTr("Cancel")
                onClicked: dialog.reject()
                Keys.onReturnPressed: dialog.reject()
            }
        }
    }
}
