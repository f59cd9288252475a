import QtQuick 2.15
import QtQuick.Controls 2.15

// Tells that something did not work, and why.
Dialog {
    id: dialog

    property alias text: label.text

    function show(heading, reason) {
        title = heading;
        text = reason;
        open();
    }

    anchors.centerIn: Overlay.overlay
    width: 460
    modal: true
    standardButtons: Dialog.Ok

    Label {
        id: label

        objectName: "message_dialog_text"
        width: dialog.availableWidth
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
}
