import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Kyr.SceneOutline 1.0

// Selections that have names: gives one to the present selection, selects one again, removes one.
EditorDialog {
    id: dialog

    readonly property bool canSave: session.selectionStatus.count > 0 && name.text.trim() !== ""

    function save() {
        if (canSave && session.build.saveSelectionSet(name.text))
            name.clear();
    }
    function recall(index) {
        session.build.recallSelectionSet(index);
        close();
    }

    title: qsTr("Selection Sets")
    implicitWidth: 420
    implicitHeight: 400
    focusItem: name
    standardButtons: Dialog.Close
    defaultButton: Dialog.Close

    ColumnLayout {
        anchors.fill: parent
        spacing: 10

        RowLayout {
            spacing: 8

            DialogField {
                id: name

                objectName: "set_name"
                placeholderText: session.selectionStatus.count > 0 ? qsTr("Name of the present selection")
                                                                   : qsTr("Nothing selected to save")
                Accessible.name: qsTr("Name of the set")
                Layout.fillWidth: true
                onEntered: dialog.save()
                Keys.onDownPressed: list.forceActiveFocus()
            }
            EditorButton {
                text: qsTr("Save")
                enabled: dialog.canSave
                onClicked: dialog.save()
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            color: theme.pane
            border.color: list.activeFocus ? theme.accent : theme.border

            Text {
                anchors.centerIn: parent
                visible: list.count === 0
                text: qsTr("No sets yet")
                textFormat: Text.PlainText
                color: theme.dimText
                font.pixelSize: 12
            }
            ListView {
                id: list

                objectName: "set_list"
                anchors { fill: parent; margins: 1 }
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                highlightMoveDuration: 0
                highlightResizeDuration: 0
                activeFocusOnTab: true
                model: session.build.selectionSets
                ScrollBar.vertical: ScrollBar {}
                Keys.onReturnPressed: dialog.recall(currentIndex)
                Keys.onEnterPressed: dialog.recall(currentIndex)
                Keys.onDeletePressed: session.build.removeSelectionSet(currentIndex)

                delegate: Rectangle {
                    width: ListView.view.width
                    height: 24
                    color: ListView.isCurrentItem && list.activeFocus ? theme.accent
                         : mouse.containsMouse ? theme.header : "transparent"

                    Text {
                        x: 8
                        width: parent.width - 40
                        anchors.verticalCenter: parent.verticalCenter
                        text: DisplayText.oneLine(modelData)
                        textFormat: Text.PlainText
                        color: parent.ListView.isCurrentItem && list.activeFocus
                               ? theme.palette.highlightedText : theme.text
                        font.pixelSize: 12
                        elide: Text.ElideRight
                    }
                    MouseArea {
                        id: mouse

                        anchors { fill: parent; rightMargin: 28 }
                        hoverEnabled: true
                        onClicked: list.currentIndex = index
                        onDoubleClicked: dialog.recall(index)
                    }
                    PaneButton {
                        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                        text: "✕"
                        description: qsTr("Remove the set")
                        onClicked: session.build.removeSelectionSet(index)
                    }
                }
            }
        }
    }
}
