import QtQuick 2.15
import QtQuick.Controls 2.15
import Editor.App 1.0

// Asks which one to keep when somebody else has written the file of the open scene.
EditorDialog {
    id: dialog

    readonly property bool saveWaits: session.files.conflict === FileCommands.SaveWaits

    implicitWidth: 460
    title: qsTr("The file was changed by another program")
    visible: session.files.conflict !== FileCommands.NoConflict
    // None that loses anything.
    defaultButton: saveWaits ? Dialog.Save : session.document.modified ? Dialog.Cancel : Dialog.Reset
    standardButtons: Dialog.Reset | Dialog.Apply | Dialog.Save | Dialog.Cancel

    onReset: session.files.reload()
    onApplied: session.files.keepMine()
    onAccepted: session.files.saveElsewhere()
    onRejected: session.files.decideLater()
    onAboutToShow: {
        standardButton(Dialog.Reset).text = qsTr("Reload");
        standardButton(Dialog.Apply).text = saveWaits ? qsTr("Overwrite It") : qsTr("Keep Mine");
        standardButton(Dialog.Save).text = qsTr("Save As…");
    }

    Label {
        objectName: "changed_file_text"
        width: dialog.availableWidth
        text: (dialog.saveWaits
               ? qsTr("Saving “%1” would overwrite what the other program wrote.")
               : qsTr("“%1” is not what is open here any more.")).arg(session.document.title)
              + (session.document.modified ? " " + qsTr("Reloading loses your unsaved changes.") : "")
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
}
