import QtQuick 2.15
import QtQuick.Controls 2.15

// Says before an export what the file will not carry.
EditorDialog {
    id: dialog

    implicitWidth: 520
    title: qsTr("What a glTF file will not carry")
    visible: session.exporter.asking
    defaultButton: Dialog.Ok
    standardButtons: Dialog.Ok | Dialog.Cancel

    onAccepted: session.exporter.chooseFile()
    onRejected: session.exporter.giveUp()
    onAboutToShow: standardButton(Dialog.Ok).text = qsTr("Export…")

    Column {
        width: dialog.availableWidth
        spacing: 6

        Repeater {
            model: session.exporter.losses

            Label {
                width: parent.width
                leftPadding: 10
                text: "• " + modelData
                wrapMode: Text.Wrap
                textFormat: Text.PlainText
            }
        }
        Label {
            width: parent.width
            topPadding: 6
            text: qsTr("The open scene keeps all of it; so does a file saved with Save.")
            color: theme.dimText
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
        }
    }
}
