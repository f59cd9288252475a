import QtQuick 2.15
import QtQuick.Controls 2.15

// A modal dialog in the middle of the window.
Dialog {
    id: dialog

    anchors.centerIn: Overlay.overlay
    modal: true
    padding: 20
    topPadding: 10

    header: Label {
        text: dialog.title
        padding: 20
        bottomPadding: 0
        font { pixelSize: 14; bold: true }
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    footer: DialogButtonBox {
        padding: 20
        topPadding: 0
        spacing: 8
        background: null
        delegate: EditorButton {}
    }
    background: Rectangle {
        radius: 4
        color: theme.palette.window
        border.color: theme.border
    }
}
