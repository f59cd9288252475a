import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Kyr.SceneOutline 1.0

// Gives all selected objects new names by one rule, which shows them beforehand.
EditorDialog {
    id: dialog

    readonly property QtObject names: session.batchRename

    title: names.count === 1 ? qsTr("Rename 1 Object") : qsTr("Rename %1 Objects").arg(names.count)
    implicitWidth: 520
    implicitHeight: 480
    focusItem: pattern
    standardButtons: Dialog.Ok | Dialog.Cancel

    onAboutToShow: {
        names.begin();
        pattern.selectAll();
    }
    onAccepted: names.apply()
    onRejected: names.cancel()

    ColumnLayout {
        anchors.fill: parent
        spacing: 10

        GridLayout {
            columns: 4
            columnSpacing: 10
            rowSpacing: 8

            Label {
                text: qsTr("New name")
                textFormat: Text.PlainText
            }
            DialogField {
                id: pattern

                objectName: "rename_pattern"
                text: dialog.names.pattern
                Accessible.name: qsTr("New name")
                Layout.fillWidth: true
                onTextEdited: dialog.names.pattern = text
                onEntered: dialog.pressDefault()
            }
            Label {
                text: qsTr("First number")
                textFormat: Text.PlainText
            }
            DialogField {
                objectName: "rename_first"
                text: dialog.names.first
                validator: IntValidator {}
                Accessible.name: qsTr("First number")
                Layout.preferredWidth: 70
                onTextEdited: dialog.names.first = parseInt(text) || 0
                onEntered: dialog.pressDefault()
            }
            Label {
                text: qsTr("Replace")
                textFormat: Text.PlainText
            }
            DialogField {
                objectName: "rename_find"
                text: dialog.names.find
                Accessible.name: qsTr("Replace")
                Layout.fillWidth: true
                onTextEdited: dialog.names.find = text
                onEntered: dialog.pressDefault()
            }
            Label {
                text: qsTr("by")
                textFormat: Text.PlainText
            }
            DialogField {
                objectName: "rename_replacement"
                text: dialog.names.replacement
                Accessible.name: qsTr("by")
                Layout.preferredWidth: 130
                onTextEdited: dialog.names.replacement = text
                onEntered: dialog.pressDefault()
            }
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("* is the old name, # a number, ### one of three digits.")
            textFormat: Text.PlainText
            color: theme.dimText
            elide: Text.ElideRight
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            color: theme.pane
            border.color: theme.border

            ListView {
                id: preview

                objectName: "rename_preview"
                anchors { fill: parent; margins: 1 }
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                currentIndex: -1
                reuseItems: true
                model: dialog.names
                ScrollBar.vertical: ScrollBar {}

                delegate: Item {
                    width: ListView.view.width
                    height: 22

                    Text {
                        x: 8
                        width: parent.width / 2 - 16
                        anchors.verticalCenter: parent.verticalCenter
                        text: DisplayText.oneLine(model.before)
                        textFormat: Text.PlainText
                        color: theme.dimText
                        font.pixelSize: 12
                        elide: Text.ElideRight
                    }
                    Text {
                        x: parent.width / 2
                        width: parent.width / 2 - 16
                        anchors.verticalCenter: parent.verticalCenter
                        text: model.after === "" ? qsTr("keeps its name") : DisplayText.oneLine(model.after)
                        textFormat: Text.PlainText
                        color: model.after === "" ? theme.warning : theme.text
                        font.pixelSize: 12
                        elide: Text.ElideRight
                    }
                }
            }
        }
    }
}
