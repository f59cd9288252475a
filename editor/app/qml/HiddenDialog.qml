import QtQuick 2.15
import QtQuick.Controls 2.15

// Asks before a command acts on selected objects that the tree's filter hides.
EditorDialog {
    id: dialog

    property string command
    property int hidden

    objectName: "hidden_dialog"
    implicitWidth: 420
    defaultButton: Dialog.Cancel
    title: command
    standardButtons: Dialog.Yes | Dialog.Cancel

    onAccepted: session.hiddenQuestion.proceed()

    Connections {
        target: session.hiddenQuestion

        function onAsked(command, hidden) {
            dialog.command = command;
            dialog.hidden = hidden;
            dialog.open();
        }
    }
    Label {
        width: dialog.availableWidth
        text: dialog.hidden === 1
              ? qsTr("The filter hides 1 of the %1 selected objects. Go on with all?")
                    .arg(session.selectionStatus.count)
              : qsTr("The filter hides %1 of the %2 selected objects. Go on with all?")
                    .arg(dialog.hidden).arg(session.selectionStatus.count)
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
}
