import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

// Tells that something did not work, and why.
EditorDialog {
    id: dialog

    property alias text: label.text

    function show(heading, reason) {
        title = heading;
        text = DisplayText.excerpt(reason);
        open();
    }

    implicitWidth: 460
    standardButtons: Dialog.Ok

    Label {
        id: label

        objectName: "message_dialog_text"
        width: dialog.availableWidth
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
}
