import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

// Asks what to do with unsaved changes before they would be lost.
EditorDialog {
    id: dialog

    implicitWidth: 420
    title: qsTr("Unsaved changes")
    visible: session.files.confirming
    defaultButton: Dialog.Save
    standardButtons: Dialog.Save | Dialog.Discard | Dialog.Cancel

    onAccepted: session.files.saveAndContinue()
    onDiscarded: session.files.discardAndContinue()
    onRejected: session.files.stay()

    Label {
        width: dialog.availableWidth
        text: qsTr("Save the changes to “%1”?").arg(DisplayText.oneLine(session.document.title))
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
}
