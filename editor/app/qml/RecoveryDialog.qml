import QtQuick 2.15
import QtQuick.Controls 2.15

// Offers what a session left unsaved that did not end by itself.
EditorDialog {
    id: dialog

    implicitWidth: 460
    title: qsTr("Recover unsaved work?")
    // The scene of the command line comes first.
    visible: session.recovery.offering && !session.loader.loading
    defaultButton: Dialog.Ok
    standardButtons: Dialog.Ok | Dialog.Discard | Dialog.Cancel

    onAccepted: session.recovery.recover()
    onDiscarded: session.recovery.discard()
    onRejected: session.recovery.decideLater()
    onAboutToShow: {
        standardButton(Dialog.Ok).text = qsTr("Recover");
        standardButton(Dialog.Cancel).text = qsTr("Not Now");
    }

    Label {
        objectName: "recovery_text"
        width: dialog.availableWidth
        text: qsTr("The editor ended before “%1” was saved. Its state of %2 can be opened again.")
                  .arg(session.recovery.title).arg(session.recovery.time)
              + (session.recovery.outdated ? " " + qsTr("The file itself was changed after that.") : "")
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
}
